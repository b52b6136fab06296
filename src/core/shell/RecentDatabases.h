#pragma once

#include <QStringList>

/// The database files that this workstation opened last, with their paths, the latest first. They are kept
/// with what is remembered about the windows.
namespace RecentDatabases
{
/// At most nine, so that each can have a digit as its key.
QStringList Files();
void Add(const QString &file);
void Remove(const QString &file);
/// "&2 provider.mdb (/srv/veltrane)" for the second, with its digit as the mnemonic.
QString Caption(int index, const QString &file);
} // namespace RecentDatabases
