#include "reports/writer/ReportEnd.h"

#include "core/files/File_Tools.h"
#include "core/session/Session.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Dialogs.h"
#include "reports/wizard/SSWizardNavBar.h"
#include "reports/wizard/WizardRunPage.h"
#include "reports/writer/HTMLscript.h"
#include "reports/writer/ReportPdf.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLocale>

namespace
{
/// "It was not written: /home/ann/temp.htm: Permission denied"; a failure of the database has already been
/// reported.
QString NotWritten(const QString &what, const QString &fault)
{
    return what % u" was not written" % (fault.isEmpty() ? QStringLiteral(".") : QString(u": " % fault));
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
    done.BeginButtons(FormBuilder::Align::Start);
    m_open = done.Button(QStringLiteral("OpenBtn"), QStringLiteral("&Open Report"));
    QPushButton *pdf = done.Button(QStringLiteral("PdfBtn"), QStringLiteral("&Save as PDF..."));
    done.EndButtons();
    m_saved = done.Line(QStringLiteral("Saved"), {});
    done.Stretch();

    pages->SetAvailable(m_runPage, false);
    pages->SetAvailable(m_donePage, false);
    connect(m_open, &QPushButton::clicked, this, [] { OpenDocument(HTML_OutputPath()); });
    connect(pdf, &QPushButton::clicked, this, &ReportEnd::SavePdf);
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
        m_run->Tell(NotWritten(QStringLiteral("The report"), result.fault));
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
        OpenDocument(HTML_OutputPath());
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
    m_navigation->GoTo(m_runPage);
    QString fault;
    bool saved = false;
    m_run->Run(QStringLiteral("The report is being saved as PDF..."),
               [&](Progress &progress) { saved = SaveReportAsPdf(HTML_OutputPath(), pdf, progress, fault); });
    m_saved->setText(saved ? QString(u"Saved as " % QDir::toNativeSeparators(pdf))
                           : NotWritten(QStringLiteral("The PDF"), fault));
    m_navigation->ReturnTo(m_donePage);
    m_open->setFocus();
}
