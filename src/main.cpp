#include "core/shell/Main.h"
#include "core/shell/Screens.h"
#include "forms/frames/FormStyle.h"
#include "forms/frames/StandardDialogs.h"

#include <QApplication>
#include <QLocale>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veltrane"));
    QApplication::setDesktopFileName(QStringLiteral("veltrane"));
    // The end of a session decides when the program ends, since no window is open between two sessions.
    QApplication::setQuitOnLastWindowClosed(false);
    // On a workstation without a locale, amounts are shown as the product's users write them.
    if (QLocale::system().language() == QLocale::C)
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    InstallFormStyle();
    InstallStandardDialogs();
    Screens::Install();
    Main();
    return QApplication::exec();
}
