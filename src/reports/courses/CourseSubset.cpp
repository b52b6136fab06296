#include "reports/courses/CourseSubset.h"

#include "platform/desktop/Directories.h"

#include <QFile>
#include <QSaveFile>

namespace
{
/// Even a list of every course of a large site stays far below this.
constexpr qint64 mostBytes = 1 << 20;

QString FileName()
{
    return Directories::WrittenFile(QStringLiteral("course.dat"));
}
} // namespace

QList<int> CourseSubset::Load()
{
    QList<int> courseRefs;
    QFile file(FileName());
    if (!file.open(QIODevice::ReadOnly))
        return courseRefs;
    const QByteArray line = file.readLine(mostBytes).trimmed();
    for (const QByteArray &part : line.split(',')) {
        bool isNumber = false;
        const int courseRef = part.toInt(&isNumber);
        if (isNumber)
            courseRefs.append(courseRef);
    }
    return courseRefs;
}

void CourseSubset::Save(const QList<int> &courseRefs)
{
    QByteArray line;
    for (const int courseRef : courseRefs)
        line += QByteArray::number(courseRef) + ',';
    QSaveFile file(FileName());
    if (file.open(QIODevice::WriteOnly)) {
        file.write(line + '\n');
        if (file.flush())
            file.commit();
    }
}
