#pragma once

#include <QByteArray>
#include <QString>

// The credentials of databases that this workstation has opened, in `key.dat`: a scrambled line for each,
// "[key]=value" when unscrambled. Keys compare without regard to case.

/// Scrambles or unscrambles a line: the same routine does both. Line ends are left unchanged.
QByteArray ScrambleLine(const QByteArray &line);

/// The value stored under `key`; "" if there is none, or no file.
QString FetchCredential(const QString &file, const QString &key);
/// Stores `value` under `key` at the end of the file; "" removes the key. A new file is written and then
/// replaces the old one in one step, so that a failure, such as a full disk, leaves the old one unchanged and
/// returns false.
bool StoreCredential(const QString &file, const QString &key, const QString &value);

/// Stores the credentials of the session's database in `key.dat`.
bool StoreSessionCredential();
/// Reads the credentials of the session's database from `key.dat` into gDBUser and gDBPassword.
void FetchSessionCredential();
