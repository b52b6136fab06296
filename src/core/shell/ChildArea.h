#pragma once

#include <QMdiArea>

#include <vector>

/// The area of the child windows.
class ChildArea final : public QMdiArea
{
    Q_OBJECT

public:
    explicit ChildArea(QWidget *parent = nullptr);

    /// The frame of the open form with that object name; null if it is not open.
    QMdiSubWindow *Child(const QString &name) const;
    /// Opens a form as a child window.
    QMdiSubWindow *Open(QWidget *form);

    /// Arranges the windows that are not minimised side by side, in the order in which they were opened.
    /// They keep filling the area when its size changes, until one of them is moved.
    void Tile();
    /// Lines the minimised windows up along the lower edge.
    void ArrangeIcons();

protected:
    /// Keys pressed in a dialog of a child window belong to the dialog, including Ctrl+Tab for its tabs. No
    /// child window closes under a modal one, which may depend on what it shows.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    /// Closing a window leads back to the one that the user came from.
    bool viewportEvent(QEvent *event) override;

private:
    QList<QMdiSubWindow *> TiledWindows() const;
    bool StillTiled() const;
    /// Equal shares of the width or, if a window needs more than its share, what each needs plus an equal
    /// share of the rest; equal shares again if there is not enough for all.
    static std::vector<int> TileWidths(const QList<QMdiSubWindow *> &windows, int room);

    QHash<const QMdiSubWindow *, QRect> m_tiles;
};
