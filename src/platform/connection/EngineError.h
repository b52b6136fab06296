#pragma once

#include <QList>
#include <QString>

/// One entry of an engine's error list. `number` is the engine's native number: -1905 for a wrong
/// password of the file engine, 18456 for a logon that a server refused, 20009 for a server that cannot
/// be reached.
struct EngineError {
    int number = 0;
    QString source;
    QString description;
    QString sqlState;
};

using EngineErrors = QList<EngineError>;
