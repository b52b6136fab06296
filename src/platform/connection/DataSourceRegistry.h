#pragma once

#include <QString>
#include <QStringList>

/// The machine's registry of data sources and database drivers, as keys that hold named values below
/// "Software\ODBC". Here it stands on the ODBC manager's own files, so that other programs see the sources.
/// The driver of database files is built into this program and answers as installed. Names compare without
/// regard to case.
namespace DataSourceRegistry
{
/// The built-in driver, by the name under which data sources of a file are registered.
inline constexpr char16_t FileDriver[] = u"Microsoft Access Driver (*.mdb)";

/// True if the key stands there.
bool HasKey(const QString &key);
/// A value's text, "" where there is none.
QString Read(const QString &key, const QString &name);
/// Writes a value and makes its key if it is missing. New data sources are written for the whole machine,
/// or for the user where that is not allowed. False if neither can be written or the text does not fit.
bool Write(const QString &key, const QString &name, const QString &text);
/// The names of the values of a key.
QStringList ValueNames(const QString &key);

/// The driver of a data source by its full name, "" for a source that is not there.
QString DriverName(const QString &source);
/// True for the names of the driver of database files.
bool IsFileDriver(const QString &driver);
/// True for the drivers of the servers that the system runs on: SQL Server and PostgreSQL.
bool IsServerDriver(const QString &driver);
} // namespace DataSourceRegistry
