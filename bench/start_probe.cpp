#include "core/shell/Main.h"
#include "core/shell/Screens.h"
#include "core/shell/frmMain.h"
#include "forms/frames/StandardDialogs.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"

#include <QApplication>
#include <QMainWindow>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>

#include <cstdio>
#include <cstdlib>

// One start, for the benchmark that runs it as a process: `start_probe <directory>` starts the program with
// the settings in that directory and ends when its main window can be used; without a directory it shows an
// empty window with a tool bar and a tree.

namespace
{
/// Ends the process as soon as `isUsable` holds and all events posted until then are handled and painted.
void EndWhen(const std::function<bool()> &isUsable)
{
    auto *poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, qApp, [isUsable] {
        if (!isUsable())
            return;
        QApplication::processEvents();
        std::_Exit(0);
    });
    poll->start(0);
}

QWidget *Window(const char *name)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->objectName() == QLatin1String(name))
            return window;
    }
    return nullptr;
}

void StartProgram(const QString &directory)
{
    Directories::SetProgram(directory);
    InstallStandardDialogs();
    Screens::Install();
    Dialogs::Installed().msgBox = [](const QString &text, const QString &, Dialogs::Buttons, Dialogs::Icon,
                                     Dialogs::Answer) {
        std::fprintf(stderr, "start_probe: %s\n", qPrintable(text));
        std::_Exit(2);
        return Dialogs::Answer::Ok;
    };
    frmMain::AssumeScreenWidth(1280);
    Main();
    // The time that the splash screen is shown is not part of the start.
    Window("frmSplash")->findChild<QTimer *>(QStringLiteral("Timer1"))->setInterval(0);
    EndWhen([] { return Window("frmMain") != nullptr; });
}

void StartTwin()
{
    auto *window = new QMainWindow;
    window->addToolBar(QStringLiteral("Tools"))->addAction(QStringLiteral("Action"));
    window->setCentralWidget(new QTreeWidget);
    window->resize(1000, 700);
    window->show();
    EndWhen([window] { return window->isVisible(); });
}
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc > 1)
        StartProgram(QString::fromLocal8Bit(argv[1]));
    else
        StartTwin();
    return QApplication::exec();
}
