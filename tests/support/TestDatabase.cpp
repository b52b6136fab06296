#include "support/TestDatabase.h"

#include "core/session/Session.h"
#include "database/connection/BlankTemplate.h"
#include "platform/connection/ColumnTypes.h"
#include "platform/desktop/Directories.h"
#include "platform/engines/FileDatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTest>

namespace
{
const QString source = u"VeltraneTest"_qs;

void Fail(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}

QString FirstError(const Connection &connection)
{
    return connection.Errors().isEmpty() ? QString() : connection.Errors().first().description;
}

QString ShippedDirectory()
{
    return QCoreApplication::applicationDirPath() + u"/system"_qs;
}

/// The template without its password, made once in a run.
QString PlainTemplate()
{
    static const QTemporaryDir directory;
    const QString file = directory.filePath(u"plain"_qs);
    if (QFile::exists(file))
        return file;
    const QString half = file + u".half"_qs;
    if (!CopyOver(ShippedDirectory() + u"/blank"_qs, half) || !OpenUpTemplate(half))
        Fail(u"The template cannot be opened: " %
             (EngineErrorList().isEmpty() ? QString() : EngineErrorList().first().description));
    else
        QFile::rename(half, file);
    return file;
}

/// The server of the tests: the data sources that it was started with, and this process's own database.
class Server final
{
public:
    static Server &Instance()
    {
        static Server server;
        return server;
    }

    /// Puts the catalogue back as the template has it, or makes it where that cannot be done.
    void MakeCatalogue()
    {
        UseSources();
        Connection connection;
        if (m_hasCatalogue && connection.Open(ConnectionText())) {
            const auto reset = connection.OpenRecordset(u"SELECT veltrane_test.reset()"_qs);
            if (reset && reset->First().Long(0) == 1)
                return;
            connection.Close();
        }
        DropCatalogue();
        Administer(u"CREATE DATABASE " % Catalogue() % u" TEMPLATE veltrane_template");
        m_hasCatalogue = true;
    }

    static QString ConnectionText()
    {
        return u"ODBC;DATABASE=" % source % u";UID=sa;PWD=;DSN=" % source % u";EXCLUSIVE=00";
    }

    static QString Catalogue()
    {
        return u"veltrane_test_" % QString::number(QCoreApplication::applicationPid());
    }

private:
    Server()
    {
        QFile given(qEnvironmentVariable("VELTRANE_TEST_POSTGRES") + u"/odbc.ini"_qs);
        if (!given.open(QIODevice::ReadOnly))
            qFatal("The test server does not run: %s", qPrintable(given.fileName()));
        const QString sources = QString::fromUtf8(given.readAll());
        const qsizetype begin = sources.indexOf(u"[veltrane]"_qs) + 10;
        const qsizetype end = sources.indexOf(u'[', begin);
        QString own = sources.mid(begin, end < 0 ? -1 : end - begin);
        own.replace(u"Database=veltrane\n"_qs, QString(u"Database=" % Catalogue() % u"\n"));
        QFile ini(m_directory.filePath(u"odbc.ini"_qs));
        if (ini.open(QIODevice::WriteOnly))
            ini.write(QString(sources % u"\n[" % source % u"]" % own).toUtf8());
        m_sources = QFile::encodeName(ini.fileName());
        UseSources();
        qAddPostRoutine([] {
            Instance().DropCatalogue();
            Instance().m_administrator.Close();
        });
    }

    void DropCatalogue() { Administer(u"DROP DATABASE IF EXISTS " % Catalogue() % u" WITH (FORCE)"); }

    void Administer(const QString &sql)
    {
        const QString text = u"ODBC;DATABASE=veltrane_admin;UID=sa;PWD=;DSN=veltrane_admin;EXCLUSIVE=00"_qs;
        if (!(m_administrator.IsOpen() || m_administrator.Open(text)) || !m_administrator.Execute(sql))
            Fail(sql % u": " % FirstError(m_administrator));
    }

    /// A test with data sources of its own turns the manager away from these.
    void UseSources() const { qputenv("ODBCINI", m_sources); }

    QTemporaryDir m_directory;
    QByteArray m_sources; ///< path of the file
    Connection m_administrator;
    bool m_hasCatalogue = false;
};
} // namespace

TestDatabase::TestDatabase()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    MakeProgramDirectory();
    if (IsOnServer())
        MakeCatalogue();
    else
        ChooseFile();
    gDBPassword.clear();
    gDBUser.clear();
    gDBQDescription.clear();
    gDBValid = Reconnect();
}

TestDatabase::~TestDatabase()
{
    gConnection.Close();
    gDBValid = false;
}

bool TestDatabase::IsOnServer()
{
    return qEnvironmentVariable("VELTRANE_TEST_BACKEND") == u"postgresql"_qs;
}

bool TestDatabase::HasSizedTexts()
{
    const auto rows = gConnection.OpenRecordset(u"SELECT City FROM City WHERE City_ID = 0"_qs);
    return rows && rows->Column(0).definedSize < ColumnTypes::unlimitedSize;
}

bool TestDatabase::Reconnect() const
{
    const bool connected = gConnection.Open(m_text);
    if (!connected)
        Fail(u"Cannot connect: " % FirstError(gConnection));
    return connected;
}

void TestDatabase::MakeProgramDirectory() const
{
    const QString system = m_directory.filePath(u"system"_qs);
    QDir().mkpath(system);
    for (const QFileInfo &file : QDir(ShippedDirectory()).entryInfoList(QDir::Files))
        QFile::copy(file.filePath(), system % u'/' % file.fileName());
    Directories::SetProgram(m_directory.path());
}

void TestDatabase::ChooseFile()
{
    gDBQFilename = m_directory.filePath(u"test.mdb"_qs);
    gDBQName.clear();
    gDBQType = 1;
    gDBQUseODBC = false;
    MakeFile(gDBQFilename);
    m_text = u"DBQ=" % gDBQFilename %
             u";Driver={Microsoft Access Driver (*.mdb)};DriverId=25;MaxBufferSize=8192;Threads=20;PWD=";
}

void TestDatabase::MakeCatalogue()
{
    Server::Instance().MakeCatalogue();
    gDBQFilename = Server::Catalogue();
    gDBQName = source;
    gDBQType = 2;
    gDBQUseODBC = true;
    m_text = Server::ConnectionText();
}

void TestDatabase::MakeFile(const QString &file)
{
    if (!QFile::copy(PlainTemplate(), file))
        Fail(u"Cannot copy the template to " % file);
}

QStringList TestDatabase::Rows(const QString &sql)
{
    const std::optional<Recordset> rows = gConnection.OpenRecordset(sql);
    if (!rows) {
        Fail(sql % u": " % FirstError(gConnection));
        return {};
    }
    QStringList result;
    for (const auto &row : *rows) {
        QStringList values;
        for (int column = 0; column < rows->ColumnCount(); ++column)
            values << row.Text(column);
        result << values.join(u'|');
    }
    return result;
}

QString TestDatabase::Value(const QString &sql)
{
    const std::optional<Recordset> rows = gConnection.OpenRecordset(sql);
    if (!rows)
        Fail(sql % u": " % FirstError(gConnection));
    return !rows || rows->IsEmpty() ? QString() : rows->First().Text(0);
}

void TestDatabase::Run(const QStringList &statements)
{
    for (const QString &sql : statements) {
        if (!gConnection.Execute(sql))
            Fail(sql % u": " % FirstError(gConnection));
    }
}
