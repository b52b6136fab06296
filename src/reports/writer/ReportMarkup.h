#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

/// A text of a report as it is read: no tags but those that reports write themselves.
struct ReportMarkup {
    struct Link {
        qsizetype from = 0;
        qsizetype length = 0;
        QString target{};
    };
    QString text; ///< lines are separated by QChar::LineSeparator
    std::vector<Link> links;
};

/// Reads the line breaks, links and characters that reports write. Fields are raw HTML, so a text may contain
/// anything: nullopt if it has other tags or entities.
std::optional<ReportMarkup> ReadReportMarkup(QByteArrayView html);
