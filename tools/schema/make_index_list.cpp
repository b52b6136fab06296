// make-index-list <schema.sql> <output.cpp>
// derives from the one description of the schema the indexes that the file engine adds to older databases.

#include "schema/SchemaScripts.h"

#include <QFile>
#include <QSaveFile>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QTextStream errors(stderr);
    if (argc != 3) {
        errors << "usage: make-index-list <schema.sql> <output.cpp>\n";
        return 1;
    }
    QFile file(QString::fromLocal8Bit(argv[1]));
    QString error = u"cannot read " % file.fileName();
    std::optional<Schema> schema;
    if (file.open(QIODevice::ReadOnly))
        schema = ReadSchema(QString::fromUtf8(file.readAll()), error);
    if (!schema) {
        errors << "make-index-list: " << error << '\n';
        return 1;
    }
    QSaveFile output(QString::fromLocal8Bit(argv[2]));
    const bool written = output.open(QIODevice::WriteOnly) &&
                         output.write(FileIndexList(*schema).toUtf8()) >= 0 && output.commit();
    return written ? 0 : 1;
}
