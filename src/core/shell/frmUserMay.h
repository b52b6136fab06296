#pragma once

#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

class QMenuBar;

/// What is open to a user, only to look at: the menus as that user sees them, and a list of every command and
/// of every right inside the screens.
class frmUserMay final : public FormDialog
{
    Q_OBJECT

public:
    /// `rights` is the user's rights text; `user` is empty for one without a name yet.
    frmUserMay(const QString &user, const QString &rights, QWidget *parent = nullptr);

private:
    QMenuBar *Menus();
    void ListCommands();
    void ListRights(const QString &rights);
    void AddRow(const QString &where, const QString &what, const QString &howFar);
    QString HowFar(const char *menu, const QString &command) const;

    QStringList m_closed; ///< identifiers of tools
    ListModel m_rows;
};
