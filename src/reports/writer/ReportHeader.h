#pragma once

#include <QByteArray>
#include <QString>

/// The user's own letterhead, a file that every report carries below its head.
struct ReportHeader {
    QByteArray bytes; ///< as they go into the report, with a line end behind them; "" = none
    QString fault;    ///< why a letterhead that is there is left out; "" = none is
};

/// Reads the file. It goes in byte by byte, for whoever wrote it chose its encoding for the report's page;
/// only one that is marked as Unicode is turned into the page's. What is no text, or more of it than a
/// letterhead can be, is left out: it would spoil every report.
ReportHeader ReadReportHeader(const QString &fileName);
