#pragma once

#include <QByteArray>
#include <QString>

// The credentials of databases that this workstation has opened, in `key.dat`: a scrambled line each, which
// reads "[key]=value" when unscrambled. Keys compare without regard to case.

/// Scrambles or unscrambles a line: the same routine does both. Line ends stay as they are.
QByteArray ScrambleLine(const QByteArray &line);

/// The value stored under `key`; "" where there is none, or no file.
QString FetchCredential(const QString &file, const QString &key);
/// Puts `value` under `key` at the end of the file; "" removes the key. The file is rewritten aside and
/// then replaced at once, so that a failure, such as a full disk, leaves it as it was; false then.
bool StoreCredential(const QString &file, const QString &key, const QString &value);

/// Stores the credentials of the session's database in `key.dat`.
bool StoreSessionCredential();
/// Takes the credentials of the session's database from `key.dat` into gDBUser and gDBPassword.
void FetchSessionCredential();
