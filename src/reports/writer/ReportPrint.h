#pragma once

#include <QString>

class Progress;
class QPrinter;
class QWidget;

/// A printer as reports are drawn for: turned sideways if the rows of `report` are too wide for upright
/// sheets. Its paper is the user's own.
void SetUpPrinter(QPrinter &printer, const QString &report);

/// Draws a written report, including its letterhead, onto the paper of the printer; rows that are too wide
/// are scaled down to fit. `progress` is told how many of how many kilobytes have been drawn; without one, no
/// event is served meanwhile. False if it was stopped or could not be drawn: nothing is printed then, and
/// `fault` says why ("" = stopped).
bool PrintReport(const QString &report, QPrinter &printer, Progress *progress, QString &fault);

/// Shows the pages of a written report, modal, with buttons that print them. "" or why they cannot be shown.
QString PreviewReport(const QString &report, const QString &title, QWidget *parent);
