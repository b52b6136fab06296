#pragma once

#include <QString>

#include <QList>
#include <QStringList>

#include <functional>
#include <optional>

/// What code below the screens may ask the user. The screens install the real boxes at start, tests a
/// script of expected ones.
namespace Dialogs
{
/// YesNoAll: Yes and No, each also for all questions of its kind that follow in a run.
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, YesNoAll, RetryCancel };
enum class Icon { None, Information, Question, Exclamation, Stop };
/// The numbers are those that callers pass on: 4 means that the failed statement runs again.
enum class Answer { None = 0, Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7, YesToAll = 8, NoToAll = 9 };

struct FileQuestion {
    QString title;
    QString folder;
    QString fileName;
    QString filter;           ///< in Qt's form: "Comma Separated Values (*.csv);;All Files (*.*)"
    QString defaultExtension; ///< without the point; added to a name that has none
};

/// A field of a record that was changed on the screen, by another workstation since, or by both.
struct FieldChange {
    QString field;
    QString yours;
    QString theirs;
    bool isChangedHere = false;
    bool isChangedElsewhere = false;
    bool takesTheirs = false; ///< which of the two is kept
};

/// The real implementations. Each entry must be set before the first question.
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
    /// `frmPercent`, modal, on a list of course titles; gives the positions that were selected.
    std::function<QList<int>(const QStringList &titles)> selectCourses;
    /// `frmConflict`, modal, on the changes of a record (`what` is "contact"): which of the two is kept of
    /// each. False where the user goes back to the record.
    std::function<bool(const QString &what, QList<FieldChange> &changes)> settleChanges;
    /// Lets the window live in a long loop.
    std::function<void()> serveEvents;
};

Hooks &Installed();

/// A modal message box. `defaultAnswer` None takes the first button, as a box without a default does.
/// Work that runs in a group is committed first, so that nobody waits for an answer with a lock held.
Answer MsgBox(const QString &text, const QString &title = {}, Buttons buttons = Buttons::Ok,
              Icon icon = Icon::None, Answer defaultAnswer = Answer::None);
/// A question that one run may ask of thousands of rows, until it is answered for all the rest.
class RepeatedQuestion final
{
public:
    /// `first` are the buttons of the first time; from then on the question can be answered for all.
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
/// A colour as a red-green-blue integer (0xRRGGBB), starting on `colour`; nothing when cancelled.
std::optional<int> ChooseColour(int colour);
/// Asks which side is kept where two workstations changed a record; the group that runs is committed first.
bool SettleChanges(const QString &what, QList<FieldChange> &changes);
void ServeEvents();
} // namespace Dialogs
