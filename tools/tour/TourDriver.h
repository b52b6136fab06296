#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <deque>
#include <functional>

/// Drives the real screens as a user's hands would: waits for a screen or a box, types and presses in it,
/// takes a numbered picture, and ends the program with a plain message if something is not as it should be.
/// Steps run from the event loop, so that they reach modal screens too.
class TourDriver final
{
public:
    using Hands = std::function<void(QWidget &screen)>;

    explicit TourDriver(QString pictureFolder);

    /// When the screen with that object name takes input, `hands` act on it.
    void On(const QString &screen, const QString &what, Hands hands);
    /// The same with a picture of the desktop before the hands act.
    void See(const QString &screen, const QString &what, Hands hands = {});
    /// When a message box with that title and text appears: takes a picture, and presses the button with that
    /// text.
    void Box(const QString &title, const QString &text, const QString &button);
    /// When a file chooser appears: types `file` into its name field.
    void ChooseFile(const QString &title, const QString &file);
    /// Waits until another program has created `file` to say that it shows something, and takes a picture;
    /// after `look` the file is removed, which ends the other program.
    void SeeFile(const QString &file, const QString &what, std::function<void()> look);
    /// When no window is left and the program would end, `action` continues.
    void WhenClosed(const QString &what, std::function<void()> action);

    /// A step of another kind: `hands` act on what `ready` returns, once it returns anything.
    void When(const QString &what, std::function<QWidget *()> ready, Hands hands, bool picture = false);

    /// Runs the steps in the application's event loop. 0 if all of them succeeded.
    int Run();

    void Picture(const QString &what);
    /// Ends the tour with a message unless `holds`.
    void Expect(bool holds, const QString &message);
    [[noreturn]] void Fail(const QString &message);

    /// The screen with that object name if it takes input now.
    static QWidget *ScreenNamed(const QString &name);
    /// The message box shown, which must have that title and text.
    QWidget *ExpectedBox(const QString &title, const QString &text);
    static QWidget *Chooser(const QString &title);

private:
    struct Step {
        QString what;
        std::function<QWidget *()> ready;
        Hands hands;
        bool picture = false;
    };
    void Poll();
    /// While the hands of a step wait for what they have started, only a dialog that it opened can go on:
    /// long runs serve the event loop, and a step must not overtake the one before it.
    bool MayGoOn(QWidget *screen) const;

    QString m_folder;
    std::deque<Step> m_steps;
    QWidgetList m_atWork; ///< the screens of the steps whose hands have not returned
    qint64 m_waitingSince = 0;
    int m_pictures = 0;
    bool m_done = false;
};

/// What hands do on a screen. A control that is missing, hidden or disabled ends the tour.
namespace Hands
{
QWidget &Control(QWidget &screen, const QString &name);
/// Clicks into the field, replaces its contents, and leaves it with Tab.
void Type(QWidget &screen, const QString &name, const QString &text);
void Press(QWidget &screen, const QString &name);
/// Presses a key in the control that has the focus.
void Key(QWidget &screen, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Chooses the drop-down row with that text.
void Choose(QWidget &screen, const QString &name, const QString &text);
/// Clicks the list row that begins with `text`; with `modifiers` the selection is extended.
void ClickRow(QWidget &screen, const QString &name, const QString &text,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void DoubleClickRow(QWidget &screen, const QString &name, const QString &text);
/// The texts of a list's rows, its columns joined with " | ".
QStringList Rows(QWidget &screen, const QString &name);
/// The text that a field, label or button shows.
QString Text(QWidget &screen, const QString &name);
/// Opens a tab by its caption.
void Tab(QWidget &screen, const QString &caption);
/// Chooses a command of the main window from its menu.
void Command(QWidget &mainWindow, const QString &identifier);
} // namespace Hands
