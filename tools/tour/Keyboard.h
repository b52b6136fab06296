#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class QAbstractButton;
class TourDriver;

/// A keyboard, and eyes to read the screen with. Who works with it holds no widget to act on: keys go to the
/// window that has the focus, as a keyboard's do, and a step waits until its screen is that window. A mouse
/// button that anything presses meanwhile ends the tour, and so does a field that no key leads to.
class Keyboard final : public QObject
{
    Q_OBJECT

public:
    using Deeds = std::function<void()>;
    using LateText = std::function<QString()>;

    explicit Keyboard(TourDriver &tour);

    // Steps, in the order in which they are queued.
    /// From this step on, up to `Release`, a mouse button ends the tour.
    void Watch();
    void Release();
    /// When the screen of that object name has the focus: `deeds` press keys and read.
    void On(const QString &screen, const QString &what, Deeds deeds);
    /// The same with a picture of the desktop before the deeds.
    void See(const QString &screen, const QString &what, Deeds deeds = {});
    /// The same once work is done that ends with the focus at `control`.
    void SeeAt(const QString &screen, const QString &control, const QString &what, Deeds deeds);
    /// When a message box of that title and text comes: a picture, and the key of the button of that text.
    void Box(const QString &title, const QString &text, const QString &button);
    /// The same where the text is known only when the box comes.
    void Box(const QString &title, const LateText &text, const QString &button);
    void ChooseFile(const QString &title, const QString &file);
    /// Opens a command of the main window: the menu's letter, `right` steps to the right, the command's
    /// letter.
    void Command(const QString &menu, int right, const QString &letter);

    // Keys.
    /// Presses keys by their names, one after the other: "Alt+C", "Down", "Ctrl+Shift+End".
    void Tap(const QString &keys, int times = 1);
    void Write(const QString &text);
    /// Goes to a field or list by the letter of its caption, or by Tab where it has none.
    void Go(const QString &name);
    /// Goes to a field and replaces what it holds.
    void Fill(const QString &name, const QString &text);
    /// Presses a button by its letter, or by Tab and Space where it has none.
    void Press(const QString &name);
    /// Goes to a drop-down and chooses the row of that text with the arrow keys.
    void Choose(const QString &name, const QString &text);
    /// In the list or tree that has the focus: walks to the row that begins with `text`.
    void ToRow(const QString &text);
    /// The same without losing what is selected, and selects the row, too.
    void AddRow(const QString &text);
    /// Opens a tab by Ctrl+Tab.
    void OpenTab(const QString &caption);

    // Eyes.
    QString Title() const;
    QString Focus() const; ///< the name of the control that has the focus
    QString Text(const QString &name) const;
    /// The rows of a list, its columns joined with " | ", or the nodes of a tree, two blanks deeper each
    /// level.
    QStringList Rows(const QString &name) const;
    bool IsEnabled(const QString &name) const;
    void Expect(bool holds, const QString &message) const;
    /// Expects that a field, label or button shows `text`.
    void ExpectText(const QString &name, const QString &text) const;
    /// Expects that the list or tree has a row that reads `row`.
    void ExpectRow(const QString &name, const QString &row) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Queue(const QString &what, const std::function<QWidget *()> &found, Deeds deeds, bool picture);
    bool HasFocus(QWidget *screen) const;
    QWidget &Control(const QString &name) const;
    bool IsAt(const QWidget &control) const;
    void TabTo(QWidget &control);
    void PressButton(QAbstractButton &button);
    void Walk(const QString &text, const QString &firstKey, const QString &nextKey);

    TourDriver &m_tour;
    QPointer<QWidget> m_screen; ///< the one that the deeds of the step are at work on
};
