#include "database/connection/frmODBCLogon.h"

#include "core/session/Session.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/CredentialStore.h"
#include "database/connection/DatabaseFile.h"
#include "database/connection/Registry.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "platform/desktop/Dialogs.h"

#include <QProcess>
#include <QStackedWidget>
#include <QStandardPaths>

namespace
{
/// The ODBC manager's administration program; "" if the machine has none.
QString Administrator()
{
    for (const auto *name : {"ODBCManageDataSourcesQ5", "ODBCManageDataSourcesQ4", "ODBCConfig"}) {
        QString program = QStandardPaths::findExecutable(QLatin1String(name));
        if (!program.isEmpty())
            return program;
    }
    return {};
}
} // namespace

frmODBCLogon::frmODBCLogon(const QString &proposed, QWidget *parent)
    : FormDialog(QStringLiteral("frmODBCLogon"), QStringLiteral("Database connection options"), parent)
{
    m_sources.SetColumns(
        {QStringLiteral("Data Source Name"), QStringLiteral("Description"), QStringLiteral("Location")});
    m_sources.SetCheckable(true, true);
    {
        FormBuilder form(this);
        form.Line(
            QStringLiteral("Label1"),
            QStringLiteral(
                "You can switch between Veltrane databases from here. Simply check the required database "
                "connection type, then complete the connection details and press OK. The current database "
                "connection is checked by default."));
        BuildOptions(form);
        m_pages = new QStackedWidget(this);
        for (QWidget *page : {PresentPage(), SourcePage(), FilePage(), ServerPage()})
            m_pages->addWidget(page);
        form.Place(m_pages, QStringLiteral("Pages"), {}, true);
        connect(OkCancel::Add(form, this).ok, &QPushButton::clicked, this, &frmODBCLogon::Take);
    }
    resize(fontMetrics().averageCharWidth() * 100, sizeHint().height());
    ShowSession(proposed);
    if (gDBValid)
        StoreSessionCredential();
    gDialogResult = 0;
}

void frmODBCLogon::BuildOptions(FormBuilder &form)
{
    const std::array<QString, 4> captions{
        QStringLiteral("Continue using the &existing database..."),
        QStringLiteral("Select an O&DBC datasource..."),
        QStringLiteral("Direct connection to a Microsoft &Access database..."),
        QStringLiteral("Direct connection to a Microsoft SQL&Server database...")};
    for (size_t i = 0; i < captions.size(); ++i) {
        m_ways[i] = form.Option(u"Opt_" % QString::number(i), captions[i]);
        connect(m_ways[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                m_pages->setCurrentIndex(static_cast<int>(i));
        });
    }
}

QWidget *frmODBCLogon::PresentPage()
{
    auto *page = new QWidget(this);
    FormBuilder form(page);
    form.Line(QStringLiteral("PresentDatabase"), gDBValid ? DatabaseTitle().trimmed() : QString());
    return page;
}

QWidget *frmODBCLogon::SourcePage()
{
    auto *page = new QWidget(this);
    FormBuilder form(page);
    ListView *list = form.List(QStringLiteral("ODBClist"), {}, m_sources);
    list->setAccessibleName(QStringLiteral("Data sources"));
    list->SetColumnChars({30, 20, 28});
    list->SetEmptyText(QStringLiteral("No data source is registered on this machine."));
    form.BeginButtons(FormBuilder::Align::Start);
    QPushButton *administrator =
        form.Button(QStringLiteral("ODBCAdminBtn"), QStringLiteral("32-bit ODBC Ad&ministrator"));
    QPushButton *refresh = form.Button(QStringLiteral("Command1"), QStringLiteral("&Refresh"));
    form.EndButtons();

    administrator->setEnabled(!Administrator().isEmpty());
    if (!administrator->isEnabled())
        administrator->setToolTip(QStringLiteral("No program for administering data sources is installed."));
    connect(administrator, &QPushButton::clicked, this, [] { QProcess::startDetached(Administrator(), {}); });
    connect(refresh, &QPushButton::clicked, this, &frmODBCLogon::Refresh);
    return page;
}

QWidget *frmODBCLogon::FilePage()
{
    auto *page = new QWidget(this);
    page->setObjectName(QStringLiteral("frmAccess"));
    FormBuilder form(page);
    m_file = form.Text(QStringLiteral("txtDBAccessPath"), QStringLiteral("Database &Location:"));
    ShowWholePath(m_file);
    form.Beside();
    QPushButton *find = form.Button(QStringLiteral("FindDBBtn"), QStringLiteral("Selec&t ..."));
    connect(find, &QPushButton::clicked, this, [this] { ChooseDatabaseFile(m_file); });
    return page;
}

QWidget *frmODBCLogon::ServerPage()
{
    auto *page = new QWidget(this);
    page->setObjectName(QStringLiteral("frmServer"));
    FormBuilder form(page);
    m_server = form.Text(QStringLiteral("txtServerName"), QStringLiteral("Server &Name:"));
    m_catalogue = form.Text(QStringLiteral("txtServerCatalog"), QStringLiteral("Server Catalo&g:"));
    return page;
}

void frmODBCLogon::ShowSession(const QString &proposed)
{
    FillDSNList(m_sources);
    m_ways[Present]->setHidden(!gDBValid);
    Way way = gDBValid ? Present : Source;
    if (!gDBQUseODBC && gDBQType == 1) {
        way = File;
        m_file->setText(gDBQFilename.isEmpty() ? proposed : gDBQFilename);
    } else if (!gDBQUseODBC && gDBQType == 2) {
        way = Server;
        m_server->setText(gDBQName);
        m_catalogue->setText(gDBQFilename);
    }
    m_ways[way]->setChecked(true);
    m_ways[way]->setFocus();
}

frmODBCLogon::Way frmODBCLogon::Chosen() const
{
    return static_cast<Way>(m_pages->currentIndex());
}

void frmODBCLogon::Refresh()
{
    FillDSNList(m_sources);
    if (gDBValid)
        m_ways[Present]->setChecked(true);
}

void frmODBCLogon::Take()
{
    if (Chosen() == Source && m_sources.CheckedRows().empty()) {
        Dialogs::Tell(QStringLiteral("No database selected!"), QStringLiteral("ODBC Login"),
                      Dialogs::Icon::Information);
        return;
    }
    const QString fileBefore = gDBQFilename;
    const QString nameBefore = gDBQName;
    const bool sourceBefore = gDBQUseODBC;
    gDialogResult = 0;
    const bool taken = Chosen() == Present || (Chosen() == Source && TakeSource()) ||
                       (Chosen() == File && TakeFile()) || (Chosen() == Server && TakeServer());
    if (!taken)
        return;
    const bool differs = gDBQFilename != fileBefore || gDBQName != nameBefore || gDBQUseODBC != sourceBefore;
    gDialogResult = differs ? 1 : 0;
    accept();
}

bool frmODBCLogon::TakeSource()
{
    gDBQUseODBC = true;
    const ListItem &source = m_sources.At(m_sources.CheckedRows().front());
    if (source.text.compare(gDBQName, Qt::CaseInsensitive) == 0)
        return true;
    gDBQName = source.text;
    gDBQDescription = source.subItems.value(0);
    gDBQFilename = source.subItems.value(1);
    return true;
}

bool frmODBCLogon::TakeFile()
{
    const QString file = m_file->text();
    if (file.isEmpty()) {
        Dialogs::Tell(QStringLiteral("No Access database selected!"),
                      QStringLiteral("Direct Connection Login"));
        return false;
    }
    gDBQType = 1;
    gDBQUseODBC = false;
    gDBQFilename = file;
    return true;
}

bool frmODBCLogon::TakeServer()
{
    const QString server = m_server->text();
    const QString catalogue = m_catalogue->text();
    if (server.isEmpty() || catalogue.isEmpty()) {
        Dialogs::Tell(QStringLiteral("No SQLserver or Catalogue specified!"),
                      QStringLiteral("Direct Connection Login"));
        return false;
    }
    gDBQType = 2;
    gDBQUseODBC = false;
    gDBQFilename = catalogue;
    gDBQName = server;
    return true;
}
