#pragma once

#include <QString>

class Progress;

/// Saves a report that was written, its letterhead with it, as a PDF file. Its sheet is A4, and larger where
/// a table is too wide for that; the titles of a table stand on every page. `progress` is told how many of
/// how many kilobytes are printed. False if it was stopped or could not be written: what stood there before
/// still does, and `fault` says why ("" = stopped).
bool SaveReportAsPdf(const QString &report, const QString &pdf, Progress &progress, QString &fault);
