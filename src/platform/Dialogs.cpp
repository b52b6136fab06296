#include "platform/Dialogs.h"

#include "platform/Connection.h"

Dialogs::Hooks &Dialogs::Installed()
{
    static Hooks hooks;
    return hooks;
}

Dialogs::Answer Dialogs::MsgBox(const QString &text, const QString &title, Buttons buttons, Icon icon,
                                Answer defaultAnswer)
{
    WriteGroup::CommitRunning();
    return Installed().msgBox(text, title, buttons, icon, defaultAnswer);
}

QString Dialogs::OpenFile(const FileQuestion &question)
{
    WriteGroup::CommitRunning();
    return Installed().openFile(question);
}

QString Dialogs::SaveFile(const FileQuestion &question)
{
    WriteGroup::CommitRunning();
    return Installed().saveFile(question);
}

std::optional<int> Dialogs::ChooseColour(int colour)
{
    WriteGroup::CommitRunning();
    return Installed().chooseColour(colour);
}

void Dialogs::ServeEvents()
{
    if (Installed().serveEvents)
        Installed().serveEvents();
}
