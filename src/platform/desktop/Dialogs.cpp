#include "platform/desktop/Dialogs.h"

#include "platform/connection/Connection.h"
#include "platform/connection/OneStep.h"

namespace
{
/// The user may take all day to answer.
void LetGoOfDatabase()
{
    OneStep::TakeBackRunning();
    WriteGroup::CommitRunning();
    ReadSnapshot::EndRunning();
}
} // namespace

Dialogs::Hooks &Dialogs::Installed()
{
    static Hooks hooks;
    return hooks;
}

Dialogs::Answer Dialogs::MsgBox(const QString &text, const QString &title, Buttons buttons, Icon icon,
                                Answer defaultAnswer)
{
    LetGoOfDatabase();
    return Installed().msgBox(text, title, buttons, icon, defaultAnswer);
}

bool Dialogs::RepeatedQuestion::Agrees(const QString &text, const QString &title)
{
    if (m_toAll != Answer::None)
        return m_toAll == Answer::YesToAll;
    const Answer answer = MsgBox(text, title, m_buttons, Icon::Question);
    m_buttons = Buttons::YesNoAll;
    if (answer == Answer::YesToAll || answer == Answer::NoToAll)
        m_toAll = answer;
    return answer == Answer::Yes || answer == Answer::YesToAll;
}

QString Dialogs::OpenFile(const FileQuestion &question)
{
    LetGoOfDatabase();
    return Installed().openFile(question);
}

QString Dialogs::SaveFile(const FileQuestion &question)
{
    LetGoOfDatabase();
    return Installed().saveFile(question);
}

std::optional<int> Dialogs::ChooseColour(int colour)
{
    LetGoOfDatabase();
    return Installed().chooseColour(colour);
}

bool Dialogs::SettleChanges(const QString &what, QList<FieldChange> &changes)
{
    LetGoOfDatabase();
    return Installed().settleChanges(what, changes);
}

void Dialogs::ServeEvents()
{
    if (Installed().serveEvents)
        Installed().serveEvents();
}
