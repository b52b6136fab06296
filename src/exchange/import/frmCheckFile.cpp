#include "exchange/import/frmCheckFile.h"

#include "database/values/GlobalCode.h"
#include "exchange/import/ImportState.h"
#include "forms/frames/FormBuilder.h"
#include "forms/progress/ProgressBar.h"
#include "platform/desktop/Dialogs.h"

#include <QFileInfo>
#include <QLabel>
#include <QShowEvent>

namespace
{
constexpr int shownOfValue = 200;

template <typename Number>
QString Counted(Number count)
{
    return FormatNumber(static_cast<double>(count), 0);
}

QString Summary(const ImportCheck &check)
{
    QString text = check.stopped ? QStringLiteral("Stopped. ") : QString();
    text += Counted(check.lines) % (check.lines == 1 ? u" line: " : u" lines: ") % Counted(check.fresh) %
            u" new, " % Counted(check.changed) % u" changed, " % Counted(check.same) % u" the same, " %
            Counted(check.faulty) % u" faulty.";
    if (check.faulty > 0)
        text += QStringLiteral(" An import skips the faulty ones.");
    if (check.lost > 0)
        text += u'\n' % Counted(check.lost) %
                (check.lost == 1 ? u" value would not be imported unchanged."
                                 : u" values would not be imported unchanged.");
    if (check.faultCount > static_cast<qint64>(check.faults.size()))
        text += u"\nThe first " % Counted(check.faults.size()) % u" of " % Counted(check.faultCount) %
                u" faults are listed.";
    return text;
}
} // namespace

frmCheckFile::frmCheckFile(ImportState &state, QWidget *parent)
    : FormDialog(QStringLiteral("frmCheckFile"), QStringLiteral("Check File"), parent)
    , m_state(state)
{
    m_faults.SetColumns(
        {QStringLiteral("Line"), QStringLiteral("Column"), QStringLiteral("Value"), QStringLiteral("Fault")});
    FormBuilder form(this);
    m_notice = form.Line(QStringLiteral("Notice"), u"Checking '" % QFileInfo(state.FileName()).fileName() %
                                                       u"' without changing anything in the database.");
    ProgBar = new ProgressBar(this);
    form.Place(ProgBar, QStringLiteral("ProgBar"));
    m_list = form.List(QStringLiteral("FaultList"), QStringLiteral("&Faults:"), m_faults);
    m_list->SetColumnChars({7, 20, 26, 57});
    m_list->SetEmptyText(QStringLiteral("No faulty lines."));
    m_list->setMinimumSize(fontMetrics().averageCharWidth() * 112, fontMetrics().height() * 14);
    m_whole = form.Line(QStringLiteral("FaultText"), {});
    m_whole->setMinimumHeight(m_whole->fontMetrics().lineSpacing() * 3);
    m_whole->setAlignment(Qt::AlignTop);
    m_whole->setSizePolicy(QSizePolicy::Ignored,
                           QSizePolicy::Preferred); // a long word must not widen the form
    form.BeginButtons();
    SaveBtn = form.Button(QStringLiteral("SaveBtn"), QStringLiteral("&Save Faulty Lines..."));
    ExitBtn = form.DefaultButton(QStringLiteral("ExitBtn"), QStringLiteral("&Close"));
    form.EndButtons();
    SaveBtn->setEnabled(false);
    m_whole->hide();
    connect(SaveBtn, &QPushButton::clicked, this, &frmCheckFile::SaveLines);
    connect(m_faults.Selection(), &QItemSelectionModel::currentRowChanged, this, &frmCheckFile::ShowWhole);
    connect(ExitBtn, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCheckFile::showEvent(QShowEvent *event)
{
    FormDialog::showEvent(event);
    if (!std::exchange(m_started, true))
        QMetaObject::invokeMethod(this, &frmCheckFile::Run, Qt::QueuedConnection);
}

void frmCheckFile::Run()
{
    std::optional<ImportCheck> check;
    RunUnderBar([&](Progress &run) { check = m_state.Check(run); });
    if (!check)
        return reject();
    m_check = std::move(*check);
    ShowResult();
}

void frmCheckFile::RunUnderBar(const std::function<void(Progress &run)> &work)
{
    Progress run = ProgBar->NewRun();
    m_run = &run;
    ProgBar->show();
    SaveBtn->setEnabled(false);
    ExitBtn->setText(QStringLiteral("&Cancel"));
    work(run);
    m_run = nullptr;
    ExitBtn->setText(QStringLiteral("&Close"));
    ProgBar->hide();
    SaveBtn->setEnabled(m_check.mendable > 0);
}

void frmCheckFile::ShowResult()
{
    std::vector<ListItem> rows;
    rows.reserve(m_check.faults.size());
    for (const ImportFault &fault : m_check.faults) {
        const bool isLong = fault.value.size() > shownOfValue;
        const QString value = isLong ? fault.value.left(shownOfValue) % u"..." : fault.value;
        rows.push_back({u'?' % QString::number(rows.size()),
                        QString::number(fault.line),
                        {fault.field, FlattenLines(value), fault.why}});
    }
    m_faults.Fill(std::move(rows));
    m_faults.SelectFirst();
    m_notice->setText(Summary(m_check));
    SaveBtn->setEnabled(m_check.mendable > 0);
    if (m_check.faults.empty())
        ExitBtn->setFocus();
    else
        m_list->setFocus();
}

/// Shows the selected fault in full, since the columns of the list cut long texts.
void frmCheckFile::ShowWhole()
{
    const int row = m_faults.CurrentRow();
    const size_t fault =
        row < 0 ? m_check.faults.size() : static_cast<size_t>(KeyNumber(m_faults.At(row).key));
    m_whole->setText(fault < m_check.faults.size() ? m_check.faults[fault].Sentence(shownOfValue)
                                                   : QString());
    m_whole->setVisible(row >= 0);
}

void frmCheckFile::SaveLines()
{
    const QFileInfo checked(m_state.FileName());
    const QString file = Dialogs::SaveFile(
        {QStringLiteral("Save As"), checked.path(), checked.completeBaseName() % u" faulty lines.csv",
         QStringLiteral("Comma Separated Values (*.csv);;All Files (*.*)"), QStringLiteral("csv")});
    if (!file.isEmpty())
        RunUnderBar([&](Progress &run) { m_state.SaveFaulty(file, run); });
}

bool frmCheckFile::MayLeave()
{
    if (m_run)
        m_run->Cancel();
    return !m_run;
}
