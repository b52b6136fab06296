#include "reports/writer/ReportEnd.h"

#include "core/files/File_Tools.h"
#include "core/session/Session.h"
#include "forms/frames/FormBuilder.h"
#include "forms/lists/PrintChooser.h"
#include "platform/desktop/Dialogs.h"
#include "reports/wizard/SSWizardNavBar.h"
#include "reports/wizard/WizardRunPage.h"
#include "reports/writer/HTMLscript.h"
#include "reports/writer/ReportPdf.h"
#include "reports/writer/ReportPrint.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPrinter>

namespace
{
enum class Doing { Writing, Printing };

/// "The PDF was not written: /home/ann/temp.htm: Permission denied"; a failure of the database has already
/// been reported.
QString NotDone(const QString &what, Doing doing, const QString &fault)
{
    const QStringView done = doing == Doing::Writing ? u"written" : u"printed";
    return what % u" was not " % done % (fault.isEmpty() ? QStringLiteral(".") : QString(u": " % fault));
}

QString PrintedWhere(const QPrinter &printer)
{
    const QString file = printer.outputFileName();
    return file.isEmpty() ? QString(u"Sent to the printer " % printer.printerName() % u'.')
                          : QString(u"Printed to " % QDir::toNativeSeparators(file));
}
} // namespace

ReportEnd::ReportEnd(WizardPages *pages)
    : QObject(pages)
    , m_pages(pages)
    , m_runPage(pages->count())
    , m_donePage(m_runPage + 1)
    , m_run(
          new WizardRunPage(pages->AddPage(QStringLiteral("Progress"), QStringLiteral("Processing Report"))))
{
    FormBuilder done(pages->AddPage(QStringLiteral("Done"), QStringLiteral("Report Finished")));
    m_held = done.Line(QStringLiteral("Held"), {});
    m_letterhead = done.Line(QStringLiteral("Letterhead"), {});
    m_saved = done.Line(QStringLiteral("Saved"), {});
    done.BeginButtons(FormBuilder::Align::Start);
    m_open = done.Button(QStringLiteral("OpenBtn"), QStringLiteral("&Open Report"));
    QPushButton *pdf = done.Button(QStringLiteral("PdfBtn"), QStringLiteral("&Save as PDF..."));
    QPushButton *print = done.Button(QStringLiteral("PrintBtn"), QStringLiteral("&Print..."));
    QPushButton *preview = done.Button(QStringLiteral("PreviewBtn"), QStringLiteral("Pre&view..."));
    done.EndButtons();

    pages->SetAvailable(m_runPage, false);
    pages->SetAvailable(m_donePage, false);
    connect(m_open, &QPushButton::clicked, this, &ReportEnd::Open);
    connect(pdf, &QPushButton::clicked, this, &ReportEnd::SavePdf);
    connect(print, &QPushButton::clicked, this, &ReportEnd::Print);
    connect(preview, &QPushButton::clicked, this, &ReportEnd::Preview);
}

bool ReportEnd::IsDone() const
{
    return m_pages->currentIndex() == m_donePage;
}

void ReportEnd::Run(SSWizardNavBar *navigation, const Write &write, const QString &one, const QString &many)
{
    m_navigation = navigation;
    m_navigation->GoTo(m_runPage);
    ReportResult result;
    const bool stopped = m_run->Run(QStringLiteral("The report is being generated..."),
                                    [&](Progress &progress) { result = write(progress); });
    m_title = result.title;
    if (result.written)
        ShowHeld(QLocale().toString(result.held) % u' ' % (result.held == 1 ? one : many));
    else if (stopped)
        m_navigation->GoBack();
    else
        m_run->Tell(NotDone(QStringLiteral("The report"), Doing::Writing, result.fault));
}

void ReportEnd::ShowHeld(const QString &held)
{
    m_held->setText(u"The report \"" % m_title % u"\" holds " % held % u'.');
    m_letterhead->setText(HTML_HeaderFault());
    m_letterhead->setVisible(!m_letterhead->text().isEmpty());
    m_saved->clear();
    m_navigation->GoTo(m_donePage);
    m_open->setFocus();
    if (QFile::exists(HTML_OutputPath()))
        Open();
}

/// Where no program is set for reports, the preview shows them.
void ReportEnd::Open()
{
    OpenDocument(HTML_OutputPath(), {}, [this] { Preview(); });
}

void ReportEnd::SavePdf()
{
    // The slashes in the dates of a title must not become folders.
    const QString name = QString(m_title).replace(u'/', u'-') % u".pdf";
    const QString pdf =
        Dialogs::SaveFile({QStringLiteral("Save as PDF"), gDocDir, name,
                           QStringLiteral("PDF Documents (*.pdf);;All Files (*.*)"), QStringLiteral("pdf")});
    if (pdf.isEmpty())
        return;
    QString fault;
    bool saved = false;
    RunAgain(
        QStringLiteral("The report is being saved as PDF..."),
        [&](Progress &progress) { saved = SaveReportAsPdf(HTML_OutputPath(), pdf, progress, fault); },
        [&] {
            return saved ? QString(u"Saved as " % QDir::toNativeSeparators(pdf))
                         : NotDone(QStringLiteral("The PDF"), Doing::Writing, fault);
        });
}

void ReportEnd::Print()
{
    QPrinter printer(QPrinter::HighResolution);
    SetUpPrinter(printer, HTML_OutputPath());
    printer.setDocName(m_title);
    if (!ChoosePrinter(printer, false, m_open->window()))
        return;
    QString fault;
    bool printed = false;
    RunAgain(
        QStringLiteral("The report is being printed..."),
        [&](Progress &progress) { printed = PrintReport(HTML_OutputPath(), printer, &progress, fault); },
        [&] {
            return printed ? PrintedWhere(printer)
                           : NotDone(QStringLiteral("The report"), Doing::Printing, fault);
        });
}

void ReportEnd::Preview()
{
    const QString fault = PreviewReport(HTML_OutputPath(), m_title, m_open->window());
    m_saved->setText(fault.isEmpty() ? QString()
                                     : NotDone(QStringLiteral("The report"), Doing::Printing, fault));
}

void ReportEnd::RunAgain(const QString &notice, const std::function<void(Progress &)> &work,
                         const std::function<QString()> &result)
{
    m_navigation->GoTo(m_runPage);
    m_run->Run(notice, work);
    m_saved->setText(result());
    m_navigation->ReturnTo(m_donePage);
    m_open->setFocus();
}
