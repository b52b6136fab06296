#pragma once

#include <QString>
#include <QStringList>

/// The machine's registry of data sources and database drivers, as keys that hold named values below
/// "Software\ODBC". It is kept in the ODBC manager's own files, so that other programs see the sources. The
/// driver for database files is built into this program and is reported as installed. Names compare without
/// regard to case.
namespace DataSourceRegistry
{
/// The name of the built-in driver, under which data sources of a file are registered.
inline constexpr char16_t FileDriver[] = u"Microsoft Access Driver (*.mdb)";

/// True if the key exists.
bool HasKey(const QString &key);
/// A value's text, "" if there is none.
QString Read(const QString &key, const QString &name);
/// Writes a value, and creates its key if it is missing. New data sources are written for the whole machine,
/// or for the user where that is not allowed. False if neither can be written or the text does not fit.
bool Write(const QString &key, const QString &name, const QString &text);
/// The names of the values of a key.
QStringList ValueNames(const QString &key);

/// The full name of a data source's driver, "" if there is no such source.
QString DriverName(const QString &source);
/// True for any name of the driver for database files.
bool IsFileDriver(const QString &driver);
/// True for the drivers of the servers that the system runs on: SQL Server and PostgreSQL.
bool IsServerDriver(const QString &driver);
} // namespace DataSourceRegistry
