#pragma once

#include <QString>

class Progress;

/// Saves a written report, including its letterhead, as a PDF file. The sheets are A4, or larger if a table
/// is too wide for that; the titles of a table are on every page. `progress` is told how many of how many
/// kilobytes have been printed. False if it was stopped or could not be written: the previous file is then
/// unchanged, and `fault` says why ("" = stopped).
bool SaveReportAsPdf(const QString &report, const QString &pdf, Progress &progress, QString &fault);
