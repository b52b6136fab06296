#pragma once

#include <QMdiArea>

#include <vector>

/// The room of the child windows.
class ChildArea final : public QMdiArea
{
    Q_OBJECT

public:
    explicit ChildArea(QWidget *parent = nullptr);

    /// The frame of the one open form of that object name; nothing where it is not open.
    QMdiSubWindow *Child(const QString &name) const;
    /// Opens a form as a child window.
    QMdiSubWindow *Open(QWidget *form);

    /// What the room says while no window is open in it; "" = nothing.
    void SetNotice(const QString &title, const QString &text);

    /// Arranges the windows that are not minimised side by side, in the order in which they were opened.
    /// They keep filling the room while it changes its size, until one is moved.
    void Tile();
    /// Lines the minimised windows up along the lower edge.
    void ArrangeIcons();

protected:
    /// Keys pressed in a dialog of a child window are the dialog's, Ctrl+Tab for its tabs among them. No
    /// child window closes under a modal one, which may stand on what it shows.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QList<QMdiSubWindow *> TiledWindows() const;
    bool StillTiled() const;
    /// Equal shares of the room or, where a window needs more than its share, what each needs and an equal
    /// share of the rest; equal again where there is no room for all.
    static std::vector<int> TileWidths(const QList<QMdiSubWindow *> &windows, int room);

    QHash<const QMdiSubWindow *, QRect> m_tiles;
    QString m_title;
    QString m_notice;
};
