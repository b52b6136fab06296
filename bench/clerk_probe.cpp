#include "platform/connection/Connection.h"
#include "platform/connection/OneStep.h"

#include <QCoreApplication>
#include <QString>

#include <chrono>
#include <cstdio>
#include <thread>

// A clerk at another workstation, for the benchmark that runs it as a process: `clerk_probe <connection
// text>` saves once a second until it is killed, and prints the milliseconds of each save.

namespace
{
bool Save(Connection &connection, int number)
{
    OneStep step(connection, QStringLiteral("City"));
    return step.HasBegun() &&
           connection.Execute(u"INSERT INTO City (City) VALUES ('Clerk " % QString::number(number) % u"')") &&
           step.Keep();
}
} // namespace

int main(int argc, char **argv)
{
    using Clock = std::chrono::steady_clock;
    const QCoreApplication application(argc, argv);
    Connection connection;
    if (argc != 2 || !connection.Open(QString::fromLocal8Bit(argv[1])))
        return 1;
    for (int i = 0;; ++i) {
        const auto begun = Clock::now();
        if (!Save(connection, i))
            return 2;
        const std::chrono::duration<double, std::milli> took = Clock::now() - begun;
        std::printf("%.3f\n", took.count());
        std::fflush(stdout);
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
}
