#pragma once

class QPrinter;
class QWidget;

/// Asks for the printer, or the name of a file to print to, modal; `offersSelection` adds the choice of the
/// selected rows only. False if the user cancelled.
bool ChoosePrinter(QPrinter &printer, bool offersSelection, QWidget *parent);
