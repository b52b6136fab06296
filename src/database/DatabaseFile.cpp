#include "database/DatabaseFile.h"

#include "platform/Dialogs.h"

#include <QFileInfo>
#include <QLineEdit>

void ChooseDatabaseFile(QLineEdit *field)
{
    Dialogs::FileQuestion question;
    question.title = QStringLiteral("Veltrane Database Location");
    question.filter = QStringLiteral("Micrsoft Access Database (*.mdb)");
    question.defaultExtension = QStringLiteral("mdb");
    if (!field->text().isEmpty())
        question.folder = QFileInfo(field->text()).absolutePath();
    const QString file = Dialogs::OpenFile(question);
    if (!file.isEmpty())
        field->setText(file);
}
