#pragma once

#include <QByteArray>
#include <QString>

/// The user's own letterhead, a file that is copied into every report below its head.
struct ReportHeader {
    QByteArray bytes; ///< as written to the report, followed by a line end; "" = none
    QString fault;    ///< why an existing letterhead is left out; "" = it is not
};

/// Reads the file. It is copied byte by byte, since its author chose an encoding to suit the report's page;
/// only one marked as Unicode is converted to the page's encoding. A file that is not text, or is too large
/// for a letterhead, is left out, since it would spoil every report.
ReportHeader ReadReportHeader(const QString &fileName);
