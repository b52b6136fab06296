#pragma once

#include <QString>

#include <QList>
#include <QStringList>

#include <functional>
#include <optional>

/// What code below the screens may ask the user. The screens install the real boxes at the start; tests
/// install a script of expected ones.
namespace Dialogs
{
/// YesNoAll: Yes and No, and each of them also for all further questions of the same kind in a run.
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, YesNoAll, RetryCancel };
enum class Icon { None, Information, Question, Exclamation, Stop };
/// Callers pass these numbers on: 4 means that the failed statement is run again.
enum class Answer { None = 0, Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7, YesToAll = 8, NoToAll = 9 };

struct FileQuestion {
    QString title;
    QString folder;
    QString fileName;
    QString filter;           ///< in Qt's form: "Comma Separated Values (*.csv);;All Files (*.*)"
    QString defaultExtension; ///< without the dot; added to a name that has no extension
};

/// A field of a record that was changed on the screen, by another workstation in the meantime, or by both.
struct FieldChange {
    QString field;
    QString yours;
    QString theirs;
    bool isChangedHere = false;
    bool isChangedElsewhere = false;
    bool takesTheirs = false; ///< which of the two is kept
};

/// The real implementations. All of them must be set before the first question.
struct Hooks {
    std::function<Answer(const QString &text, const QString &title, Buttons, Icon, Answer defaultAnswer)>
        msgBox;
    std::function<QString(const FileQuestion &)> openFile; ///< "" = cancelled
    std::function<QString(const FileQuestion &)> saveFile; ///< "" = cancelled
    std::function<std::optional<int>(int colour)> chooseColour;
    /// `frmDBLogon`, modal; its result is in gDialogResult.
    std::function<void()> databaseLogon;
    /// `frmRegisterDB`, modal, with its fields filled in.
    std::function<void(const QString &source, const QString &description, const QString &file)>
        registerDatabase;
    /// `frmPercent`, modal, with a list of course titles; returns the positions that were selected.
    std::function<QList<int>(const QStringList &titles)> selectCourses;
    /// `frmConflict`, modal, with the changes of a record (`what` is for example "contact"): the user decides
    /// for each which version is kept. False if the user goes back to the record.
    std::function<bool(const QString &what, QList<FieldChange> &changes)> settleChanges;
    /// Keeps the windows alive during a long loop.
    std::function<void()> serveEvents;
};

Hooks &Installed();

/// A modal message box. With `defaultAnswer` None the first button is the default. A running WriteGroup is
/// committed first, so that no lock is held while the user thinks.
Answer MsgBox(const QString &text, const QString &title = {}, Buttons buttons = Buttons::Ok,
              Icon icon = Icon::None, Answer defaultAnswer = Answer::None);
/// A message box with OK alone.
inline void Tell(const QString &text, const QString &title, Icon icon = Icon::None)
{
    MsgBox(text, title, Buttons::Ok, icon);
}
/// A question that one run may ask about thousands of rows, until the user answers it for all the rest.
class RepeatedQuestion final
{
public:
    /// `first` are the buttons shown the first time; after that the question can be answered for all.
    explicit RepeatedQuestion(Buttons first = Buttons::YesNoAll)
        : m_buttons(first)
    {
    }
    bool Agrees(const QString &text, const QString &title);

private:
    Buttons m_buttons;
    Answer m_toAll = Answer::None;
};
QString OpenFile(const FileQuestion &question);
QString SaveFile(const FileQuestion &question);
/// A colour as a red-green-blue integer (0xRRGGBB), starting with `colour`; nullopt if cancelled.
std::optional<int> ChooseColour(int colour);
/// Asks which version of each field to keep when two workstations changed a record. A running WriteGroup is
/// committed first.
bool SettleChanges(const QString &what, QList<FieldChange> &changes);
void ServeEvents();
} // namespace Dialogs
