#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>

class QAction;
class QMainWindow;
class QMenuBar;
class QToolBar;

/// The tools of the main window: one action per command, shared by the menus and the tool bar, so that its
/// state is the same everywhere. A command without a screen always stays disabled.
class CommandSet final : public QObject
{
    Q_OBJECT

public:
    /// Fills the menu bar and adds the tool bar. `available` tells whether a command can be carried out.
    CommandSet(QMainWindow *window, const std::function<bool(const QString &id)> &available);

    /// Null if no tool has that identifier.
    QAction *Tool(const QString &id) const { return m_tools.value(id); }
    void Enable(const QString &id, bool enabled = true);
    void EnableAll(bool enabled);
    /// Holds off the drawing of the tool bar while many states change.
    void HoldDrawing(bool hold);

signals:
    void Chosen(const QString &id);

private:
    void AddTool(QAction *tool, const QString &id, bool available);
    void MakeCommands(const std::function<bool(const QString &id)> &available);
    void FillMenus(QMainWindow *window);
    void AddMenuKey(QMenuBar *bar, QAction *menu);
    void FillToolBar(QMainWindow *window);

    QHash<QString, QAction *> m_tools;
    QHash<QString, bool> m_available;
    QToolBar *m_toolBar = nullptr;
};
