#pragma once

#include <QByteArray>
#include <QString>

/// `text` in windows-1252; a character outside it becomes a numeric reference of HTML ("&#9731;").
QByteArray ToWindows1252(const QString &text);
