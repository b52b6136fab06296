#include "reports/writer/ReportPrint.h"

#include "forms/lists/PrintChooser.h"
#include "reports/writer/ReportPages.h"
#include "reports/writer/ReportReader.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QKeySequence>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

namespace
{
QString NotRead(const QString &report, const ReportReader &reader)
{
    return QDir::toNativeSeparators(report) % u": " % reader.Fault();
}
/// The toolkit's preview has no keys but Escape, and is too small for a page to be read.
void MakeReadable(QPrintPreviewDialog &preview)
{
    preview.resize(preview.screen()->availableSize() * 9 / 10);
    const QHash<QString, QKeySequence> keys{
        {QPrintPreviewDialog::tr("Print"), QKeySequence::Print},
        {QPrintPreviewDialog::tr("Next page"), Qt::Key_PageDown},
        {QPrintPreviewDialog::tr("Previous page"), Qt::Key_PageUp},
    };
    for (QAction *action : preview.findChildren<QAction *>()) {
        if (action->text() == QPrintPreviewDialog::tr("Fit width"))
            action->trigger();
        else if (action->text() == QPrintPreviewDialog::tr("Page setup"))
            // Without a printer the toolkit has no such dialog, and warns.
            action->setEnabled(preview.printer()->outputFormat() == QPrinter::NativeFormat);
        else if (const QKeySequence key = keys.value(action->text()); !key.isEmpty())
            action->setShortcut(key);
    }
}
} // namespace

void SetUpPrinter(QPrinter &printer, const QString &report)
{
    printer.setResolution(ReportPages::resolution);
    ReportReader reader(report);
    const QPageLayout sheet = ReportPages::SheetFor(reader.IsOpen() ? reader.WidestRow() : 0);
    printer.setPageOrientation(sheet.orientation());
    printer.setPageMargins(sheet.margins(), sheet.units());
}

bool PrintReport(const QString &report, QPrinter &printer, Progress *progress, QString &fault)
{
    fault.clear();
    ReportReader reader(report);
    if (!reader.IsOpen()) {
        fault = NotRead(report, reader);
        return false;
    }
    ReportPages pages(printer, reader.WidestRow(), QFileInfo(report).path());
    const bool isBegun = pages.Begin();
    if (isBegun && !pages.AddAll(reader, progress)) {
        printer.abort();
        return false;
    }
    if (!isBegun || !pages.End())
        fault = WhyNotPrinted(printer);
    return fault.isEmpty();
}

QString PreviewReport(const QString &report, const QString &title, QWidget *parent)
{
    QPrinter printer(QPrinter::HighResolution);
    SetUpPrinter(printer, report);
    printer.setDocName(title);
    QPrintPreviewDialog preview(&printer, parent);
    preview.setObjectName(QStringLiteral("ReportPreview"));
    preview.setWindowTitle(u"Preview: " % title);
    MakeReadable(preview);
    QString fault;
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter *paper) {
        // The window still shows the old pages, which are gone: it must not be painted before the new ones
        // are whole.
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        PrintReport(report, *paper, nullptr, fault);
        QGuiApplication::restoreOverrideCursor();
    });
    preview.exec();
    return fault;
}
