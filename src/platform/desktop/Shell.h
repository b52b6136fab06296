#pragma once

#include <QString>
#include <QStringView>

/// Opens things as the desktop does: each file or address with the program that is set for its type.
namespace Shell
{
/// The numbers that Open returns. A number over 31 means success.
namespace Result
{
constexpr int FileNotFound = 2;
constexpr int PathNotFound = 3;
constexpr int AccessDenied = 5;
constexpr int NoAssociation = 31;
constexpr int Success = 42;
} // namespace Result

/// True if the text begins as a web address does. A text that only contains "http://" somewhere could be
/// anything else, such as the address of a file.
bool IsWebAddress(QStringView text);
/// Opens a file, a web address or a "mailto:" address with its associated program; does not wait for
/// it. `arguments` is given to a file that is itself a program.
int Open(const QString &file, const QString &arguments = {});
/// Starts `program` on `file`; false if it could not be started.
bool OpenWith(const QString &program, const QString &file);
/// The path of the desktop's system information tool; "" where there is none.
QString SystemInformationTool();
/// Starts a program and does not wait for it.
bool Run(const QString &program);
} // namespace Shell
