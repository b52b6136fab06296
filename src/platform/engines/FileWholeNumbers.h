#pragma once

#include "platform/sql/SqlShape.h"

#include <QString>

#include <vector>

struct sqlite3;

/// A value in a statement that goes directly into a column of whole numbers.
struct WholeTarget {
    size_t value;   ///< among the statement's values
    qint64 most;    ///< the largest that the column takes, allowing for a sign in the statement itself
    QString column; ///< as named in a message
};

/// The values of an INSERT or UPDATE that go into columns of whole numbers. The file engine itself would keep
/// 12.5, or a number of any size, where the servers round and refuse.
std::vector<WholeTarget> WholeTargets(const SqlTokens &tokens, sqlite3 *handle);

/// Rounds the value to what its column stores, halves away from zero as PostgreSQL does. Returns why it
/// cannot be stored, or "".
QString FitWholeNumber(const WholeTarget &target, SqlValue &value, const char *texts);
