#include "forms/lists/PrintChooser.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>

namespace
{
/// Requires a name when printing to a file: the toolkit would try to open a file without a name, and then say
/// that "" cannot be written.
void RequireFileName(QPrintDialog &chooser)
{
    auto *fileName = chooser.findChild<QLineEdit *>(QStringLiteral("filename"));
    auto *printers = chooser.findChild<QComboBox *>(QStringLiteral("printers"));
    auto *buttons = chooser.findChild<QDialogButtonBox *>();
    if (!fileName || !printers || !buttons)
        return; // the desktop's own dialog
    fileName->setPlaceholderText(QStringLiteral("Type the name of the file to print to"));
    QPushButton *print = buttons->button(QDialogButtonBox::Ok);
    const auto follow = [=] {
        print->setEnabled(!fileName->isEnabled() || !fileName->text().trimmed().isEmpty());
    };
    QObject::connect(fileName, &QLineEdit::textChanged, print, follow);
    QObject::connect(printers, &QComboBox::currentIndexChanged, print, follow);
    follow();
}
} // namespace

bool ChoosePrinter(QPrinter &printer, bool offersSelection, QWidget *parent)
{
    QPrintDialog chooser(&printer, parent);
    chooser.setObjectName(QStringLiteral("PrintDialog"));
    chooser.setOption(QAbstractPrintDialog::PrintPageRange, false);
    chooser.setOption(QAbstractPrintDialog::PrintSelection, offersSelection);
    RequireFileName(chooser);
    return chooser.exec() == QDialog::Accepted;
}

QString WhyNotPrinted(const QPrinter &printer)
{
    return printer.outputFileName().isEmpty()
               ? QString(u"the printer " % printer.printerName() % u" did not accept it.")
               : QString(QDir::toNativeSeparators(printer.outputFileName()) % u" cannot be written.");
}
