#include "torture/MonkeyOutcome.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace
{
constexpr int longestSilence = 180'000; ///< milliseconds; a program that prints nothing for that long hangs
constexpr int keptBytes = 100'000;
constexpr int longestReduction = 600'000; ///< milliseconds
constexpr qsizetype shortestEnd = 4;
constexpr qsizetype longerBy = 4;

class Reduction final
{
public:
    Reduction(const MonkeyOutcome &outcome, const QString &file)
        : m_fault(outcome.Fault())
        , m_file(file)
    {
    }

    QStringList Of(const QStringList &keys)
    {
        for (qsizetype length = shortestEnd; length < keys.size() * longerBy; length *= longerBy) {
            const QStringList end = keys.mid(qMax<qsizetype>(0, keys.size() - length));
            if (FailsAgain(end))
                return Needed(end);
        }
        return keys;
    }

    void Write(const QStringList &keys) const
    {
        QFile file(m_file);
        file.open(QIODevice::WriteOnly);
        file.write(QString(keys.join(u'\n') % u'\n').toUtf8());
    }

private:
    bool FailsAgain(const QStringList &keys) const
    {
        if (m_end.hasExpired())
            return false;
        Write(keys);
        return MonkeyOutcome::Of({u"play"_qs, m_file}).Fault() == m_fault;
    }

    /// Leaves out halves, quarters and so on, as long as the fault still occurs without them.
    QStringList Needed(QStringList keys) const
    {
        for (qsizetype step = keys.size() / 2; step > 0; step /= 2) {
            for (qsizetype at = 0; at < keys.size();) {
                const QStringList fewer = keys.mid(0, at) + keys.mid(at + step);
                if (FailsAgain(fewer))
                    keys = fewer;
                else
                    at += step;
            }
        }
        return keys;
    }

    QString m_fault;
    QString m_file;
    QDeadlineTimer m_end{longestReduction};
};
} // namespace

QString MonkeyOutcome::Verdict() const
{
    static const QRegularExpression fault(
        QStringLiteral("^(?:fault: |SUMMARY: |.*runtime error: |how it ended: ).*$"),
        QRegularExpression::MultilineOption);
    return isGood ? said.trimmed().section(u'\n', -1) : fault.match(said).captured();
}

QString MonkeyOutcome::Fault() const
{
    static const QRegularExpression differing(QStringLiteral("0x[0-9a-f]+|[0-9]+"));
    return isGood ? QString() : Verdict().remove(differing);
}

MonkeyOutcome MonkeyOutcome::Of(const QStringList &arguments)
{
    // A monkey that ends with a fault does not remove its home itself.
    const QTemporaryDir directory;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TMPDIR"_qs, directory.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{u"--role"_qs, u"monkey"_qs} + arguments);
    QByteArray said;
    while (process.waitForReadyRead(longestSilence))
        said = QByteArray(said + process.readAll()).right(keptBytes);
    const bool ended = process.state() == QProcess::NotRunning || process.waitForFinished(1000);
    if (!ended)
        process.kill();
    process.waitForFinished();
    said += process.readAll();
    MonkeyOutcome outcome{.isGood = ended && process.exitStatus() == QProcess::NormalExit &&
                                    process.exitCode() == 0,
                          .hangs = !ended,
                          .said = QString::fromUtf8(said)};
    if (outcome.hangs)
        outcome.said += u"\nfault: it hangs\n";
    else if (process.exitStatus() == QProcess::CrashExit)
        outcome.said += u"\nhow it ended: by a crash\n";
    else if (!outcome.isGood)
        outcome.said += u"\nhow it ended: by itself\n";
    return outcome;
}

QStringList ReducedKeys(const QStringList &keys, const MonkeyOutcome &outcome, const QString &file)
{
    Reduction reduction(outcome, file);
    // Reproducing a hang takes minutes each time.
    const QStringList reduced = outcome.hangs ? keys : reduction.Of(keys);
    reduction.Write(reduced);
    return reduced;
}
