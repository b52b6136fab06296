#include "database/connection/DatabaseFile.h"

#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"

#include <QFileInfo>
#include <QLineEdit>

void ChooseDatabaseFile(QLineEdit *field)
{
    Dialogs::FileQuestion question;
    question.title = QStringLiteral("Veltrane Database Location");
    question.filter = QStringLiteral("Micrsoft Access Database (*.mdb)");
    question.defaultExtension = QStringLiteral("mdb");
    question.folder = field->text().isEmpty() ? Directories::WrittenFile(QStringLiteral("database"))
                                              : QFileInfo(field->text()).absolutePath();
    const QString file = Dialogs::OpenFile(question);
    if (!file.isEmpty())
        field->setText(file);
}

void ShowWholePath(QLineEdit *field)
{
    QObject::connect(field, &QLineEdit::textChanged, field, [field](const QString &path) {
        // Escaped as rich text, so that markup characters in the path are shown as they are.
        field->setToolTip(path.isEmpty() ? QString() : u"<span>" % path.toHtmlEscaped() % u"</span>");
    });
}
