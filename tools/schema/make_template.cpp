// make-template file|sqlserver|postgresql <schema.sql> <output>
// derives from the one description of the schema the template of a new database file, or the script that sets
// up a server's catalogue.

#include "database/connection/BlankTemplate.h"
#include "platform/engines/FileDatabase.h"
#include "schema/SchemaScripts.h"

#include <QFile>
#include <QSaveFile>
#include <QTextStream>

namespace
{
int Fail(const QString &message)
{
    QTextStream(stderr) << "make-template: " << message << '\n';
    for (const EngineError &error : EngineErrorList())
        QTextStream(stderr) << "make-template: " << error.description << '\n';
    return 1;
}

bool MakeFile(const QString &output, const QString &script)
{
    QFile::remove(output);
    if (!FileDatabase::Create(output))
        return false;
    const std::unique_ptr<FileDatabase> database = FileDatabase::OpenExclusive(output, {});
    constexpr QFile::Permissions everybodyReads =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
    return database && database->Run(script) && database->NewPassword(TemplatePassword) &&
           QFile::setPermissions(output, everybodyReads);
}

bool WriteText(const QString &output, const QString &text)
{
    QSaveFile file(output);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.commit();
}
} // namespace

int main(int argc, char *argv[])
{
    if (argc != 4)
        return Fail(QStringLiteral("usage: make-template file|sqlserver|postgresql <schema.sql> <output>"));
    const QString kind = QString::fromLocal8Bit(argv[1]);
    const QString output = QString::fromLocal8Bit(argv[3]);

    QFile file(QString::fromLocal8Bit(argv[2]));
    if (!file.open(QIODevice::ReadOnly))
        return Fail(u"cannot read " % file.fileName());
    QString error;
    const std::optional<Schema> schema = ReadSchema(QString::fromUtf8(file.readAll()), error);
    if (!schema)
        return Fail(error);

    bool written = false;
    if (kind == u"file")
        written = MakeFile(output, FileScript(*schema));
    else if (kind == u"sqlserver")
        written = WriteText(output, SqlServerScript(*schema));
    else if (kind == u"postgresql")
        written = WriteText(output, PostgreSqlScript(*schema));
    else
        return Fail(u"unknown kind " % kind);
    return written ? 0 : Fail(u"cannot write " % output);
}
