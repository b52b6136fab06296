#include "Bench.h"

#include "database/connection/BlankTemplate.h"
#include "platform/engines/FileDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

namespace
{
constexpr int people = 10000;

double RunProbe(const QStringList &arguments)
{
    return Bench::Milliseconds([&] {
        QProcess probe;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        probe.setProcessEnvironment(environment);
        probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        probe.start(QCoreApplication::applicationDirPath() + QStringLiteral("/start_probe"), arguments);
        Bench::Require(probe.waitForFinished() && probe.exitCode() == 0, QStringLiteral("the start failed"));
    });
}

void MakeWorkstation(const QString &directory)
{
    const QString file = directory + QStringLiteral("/people.mdb");
    const QString blank = QCoreApplication::applicationDirPath() + QStringLiteral("/system/blank");
    Bench::Require(CopyOver(blank, file) && OpenUpTemplate(file), QStringLiteral("no database"));
    const auto database = FileDatabase::OpenExclusive(file, {});
    QString script = QStringLiteral("BEGIN;");
    for (int i = 0; i < people; ++i) {
        const QString number = QString::number(i);
        script += u"INSERT INTO Contacts (Cust_Surname, Cust_Forename) VALUES ('Surname" % number %
                  u"','Forename" % number % u"');";
    }
    Bench::Require(database->Run(script + u"COMMIT"), QStringLiteral("no people"));
    QFile settings(directory + QStringLiteral("/prog.ini"));
    Bench::Require(settings.open(QIODevice::WriteOnly), QStringLiteral("no settings"));
    settings.write(QString(u"[DBQFilename]=" % file % u"\n[DBQType]=1\n").toUtf8());
}

const Bench::Registration start("start to a usable main window, 10,000 people", [] {
    const auto directory = std::make_shared<QTemporaryDir>();
    MakeWorkstation(directory->path());
    return Bench::Case{.unit = QStringLiteral("ms"),
                       .bar = 2.5,
                       .rounds = 7,
                       .ours = [directory] { return RunProbe({directory->path()}); },
                       .twin = [] { return RunProbe({}); }};
});
} // namespace
