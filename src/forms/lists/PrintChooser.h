#pragma once

#include <QString>

class QPrinter;
class QWidget;

/// Asks for the printer, or the name of a file to print to, modal; `offersSelection` adds the choice of the
/// selected rows only. False if the user cancelled.
bool ChoosePrinter(QPrinter &printer, bool offersSelection, QWidget *parent);
/// Why nothing was printed, to end a sentence: "the printer Office did not accept it."
QString WhyNotPrinted(const QPrinter &printer);
