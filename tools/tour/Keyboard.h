#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class QAbstractButton;
class TourDriver;

/// A keyboard, and eyes to read the screen with. Steps never act on a widget: keys go to the window that has
/// the focus, as with a real keyboard, and a step waits until its screen is that window. The tour fails if
/// anything presses a mouse button, or if no key leads to a field.
class Keyboard final : public QObject
{
    Q_OBJECT

public:
    using Deeds = std::function<void()>;
    using LateText = std::function<QString()>;

    explicit Keyboard(TourDriver &tour);

    // Steps, in the order in which they are queued.
    /// From this step on until `Release`, pressing a mouse button fails the tour.
    void Watch();
    void Release();
    /// When the screen with that object name has the focus, `deeds` press keys and read.
    void On(const QString &screen, const QString &what, Deeds deeds);
    /// The same with a picture of the desktop before the deeds.
    void See(const QString &screen, const QString &what, Deeds deeds = {});
    /// The same, after work that ends with the focus on `control`.
    void SeeAt(const QString &screen, const QString &control, const QString &what, Deeds deeds);
    /// When a message box with that title and text appears: takes a picture, and presses the key of the
    /// button with that text.
    void Box(const QString &title, const QString &text, const QString &button);
    /// The same for a text that is known only when the box appears.
    void Box(const QString &title, const LateText &text, const QString &button);
    void ChooseFile(const QString &title, const QString &file);
    /// Opens a command of the main window: the menu's letter, `right` steps to the right, the command's
    /// letter.
    void Command(const QString &menu, int right, const QString &letter);

    // Keys.
    /// Presses keys by their names, one after another: "Alt+C", "Down", "Ctrl+Shift+End".
    void Tap(const QString &keys, int times = 1);
    void Write(const QString &text);
    /// Goes to a field or list by the letter of its caption, or with Tab if it has none.
    void Go(const QString &name);
    /// Goes to a field and replaces its contents.
    void Fill(const QString &name, const QString &text);
    /// Presses a button by its letter, or with Tab and Space if it has none.
    void Press(const QString &name);
    /// Goes to a drop-down and chooses the row with that text with the arrow keys.
    void Choose(const QString &name, const QString &text);
    /// Goes to a check box and ticks it unless it is ticked.
    void Tick(const QString &name);
    /// Opens the menu of what has the focus with the menu key, and chooses a command with the arrow keys.
    void ChooseFromMenu(const QString &caption);
    /// In the list or tree that has the focus: goes to the row that begins with `text`.
    void ToRow(const QString &text);
    /// The same, but looks only below the current row.
    void ToRowBelow(const QString &text);
    /// The same, but adds the row to the selection.
    void AddRow(const QString &text);
    /// Opens a tab with Ctrl+Tab.
    void OpenTab(const QString &caption);

    // Eyes.
    QString Title() const;
    QString Focus() const; ///< the name of the control that has the focus
    QString Text(const QString &name) const;
    /// The rows of a list, its columns joined with " | ", or the nodes of a tree, indented by two blanks per
    /// level.
    QStringList Rows(const QString &name) const;
    bool IsEnabled(const QString &name) const;
    /// Serves the event loop until `holds`. False if it never does.
    static bool Waited(const std::function<bool()> &holds);
    void Expect(bool holds, const QString &message) const;
    /// Fails unless a field, label or button shows `text`.
    void ExpectText(const QString &name, const QString &text) const;
    /// Fails unless the list or tree has a row that reads `row`.
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
    void WalkOn(const QString &text, const QString &nextKey);

    TourDriver &m_tour;
    QPointer<QWidget> m_screen; ///< the one that the deeds of the step are working on
};
