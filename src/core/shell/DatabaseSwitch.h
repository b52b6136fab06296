#pragma once

#include <QString>

class QWidget;

/// The switch of the session to another database. Open records are closed before it, since they belong to the
/// database that was used until then.
namespace DatabaseSwitch
{
/// Lets the user choose the database, with `proposed` as the path that the chooser starts with where the
/// session has none, and connects. If the connection fails, the user chooses again, or goes back to the last
/// database. True if another database is open, which the user has been told. If none is open, or the user
/// has no access to it, the session starts again; it also returns false if the user wanted no other one.
bool ToChosen(QWidget *window, const QString &proposed);
/// The same with the database file chosen.
bool ToFile(QWidget *window, const QString &file);

/// Whether the session names a database file that is not in its place.
bool IsFileGone();
} // namespace DatabaseSwitch
