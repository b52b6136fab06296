#pragma once

struct sqlite3;

/// Makes texts compare without regard to case in every alphabet. The file engine's own comparison and LIKE
/// know only the case of A to Z, while a server's know all. Every connection to a file must install this,
/// since the indexes of the file are sorted by it.
bool InstallTextComparison(sqlite3 *handle);
