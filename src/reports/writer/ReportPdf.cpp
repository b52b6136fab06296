#include "reports/writer/ReportPdf.h"

#include "core/session/Progress.h"
#include "reports/writer/PackedPdf.h"
#include "reports/writer/ReportPages.h"
#include "reports/writer/ReportReader.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QPdfWriter>
#include <QSaveFile>

namespace
{
enum class Printed { Whole, Not, Stopped };

Printed Print(ReportReader &report, const QString &folder, QIODevice &pdf, Progress &progress)
{
    QPdfWriter writer(&pdf);
    writer.setResolution(ReportPages::resolution);
    writer.setPageLayout(ReportPages::SheetFor(report.WidestRow()));
    ReportPages pages(writer, report.WidestRow(), folder);
    if (!pages.Begin())
        return Printed::Not;
    if (!pages.AddAll(report, &progress))
        return Printed::Stopped;
    return pages.End() ? Printed::Whole : Printed::Not;
}
} // namespace

bool SaveReportAsPdf(const QString &report, const QString &pdf, Progress &progress, QString &fault)
{
    fault.clear();
    ReportReader reader(report);
    if (!reader.IsOpen()) {
        fault = QDir::toNativeSeparators(report) % u": " % reader.Fault();
        return false;
    }
    QSaveFile file(pdf);
    bool written = file.open(QIODevice::WriteOnly);
    if (written) {
        QBuffer pages;
        pages.open(QIODevice::WriteOnly);
        const Printed printed = Print(reader, QFileInfo(report).path(), pages, progress);
        if (printed == Printed::Stopped)
            return false;
        const QByteArray packed = PackedPdf(pages.data());
        written = printed == Printed::Whole && file.write(packed) == packed.size();
    }
    if (!written || !file.flush() || !file.commit())
        fault = QDir::toNativeSeparators(pdf) % u": " % file.errorString();
    return fault.isEmpty();
}
