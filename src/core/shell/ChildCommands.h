#pragma once

#include <QObject>

class QMdiArea;
class QMenu;

/// The standard keys of the child window in front, shown in a menu: what the window cannot do now is
/// disabled.
class ChildCommands final : public QObject
{
    Q_OBJECT

public:
    /// Adds the commands at the end of the menu.
    ChildCommands(QMenu *menu, QMdiArea *children);
};
