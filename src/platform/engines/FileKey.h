#pragma once

struct sqlite3;
class QString;

enum class KeyFit { Wrong, Fits, FitsOnReopening };

/// Gives `handle` the password of its encrypted file, before anything is read through it.
bool GiveKey(sqlite3 *handle, const QString &password);

/// The same, and checks against the file itself whether the password opens it: a statement would first play
/// back the journal that a crash left and, with the wrong key, destroy the file. FitsOnReopening: the crash
/// also left a page half written, and a handle that has failed to read such a page cannot read on.
KeyFit TryKey(sqlite3 *handle, const QString &password);
