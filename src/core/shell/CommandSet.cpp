#include "core/shell/CommandSet.h"

#include "core/icons/Icons.h"
#include "core/shell/Commands.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

namespace
{
/// Short captions for the tool bar, where the two screens of daily work have a name beside their icon.
const QHash<QString, QString> &BarCaptions()
{
    static const QHash<QString, QString> captions{
        {QStringLiteral("ID_ContactManager"), QStringLiteral("Contacts")},
        {QStringLiteral("ID_CourseManager"), QStringLiteral("Courses")},
    };
    return captions;
}

QString WithoutMnemonic(QString caption)
{
    return caption.remove(u'&').remove(u'…').trimmed();
}
} // namespace

CommandSet::CommandSet(QMainWindow *window, const std::function<bool(const QString &id)> &available)
    : QObject(window)
{
    MakeCommands(available);
    FillMenus(window);
    FillToolBar(window);
}

void CommandSet::AddTool(QAction *tool, const QString &id, bool available)
{
    tool->setObjectName(id);
    m_tools.insert(id, tool);
    m_available.insert(id, available);
}

void CommandSet::MakeCommands(const std::function<bool(const QString &id)> &available)
{
    for (const Command &command : Commands()) {
        const QString id = QString::fromLatin1(command.id);
        auto *tool = new QAction(Icons::Of(QString::fromLatin1(command.icon)),
                                 QString::fromUtf8(command.caption), this);
        tool->setStatusTip(QString::fromUtf8(command.hint));
        tool->setToolTip(command.hint[0] ? QString::fromUtf8(command.hint)
                                         : WithoutMnemonic(QString::fromUtf8(command.caption)));
        tool->setIconText(BarCaptions().value(id, tool->toolTip()));
        if (command.shortcut[0])
            tool->setShortcut(QKeySequence(QString::fromLatin1(command.shortcut)));
        AddTool(tool, id, available(id));
        connect(tool, &QAction::triggered, this, [this, id] { emit Chosen(id); });
    }
    Tool(QStringLiteral("ID_Exit"))->setMenuRole(QAction::QuitRole);
    Tool(QStringLiteral("ID_About"))->setMenuRole(QAction::AboutRole);
}

void CommandSet::FillMenus(QMainWindow *window)
{
    const auto fill = [this](QMenu *menu, const CommandMenu &content) {
        AddTool(menu->menuAction(), QString::fromLatin1(content.id), true);
        for (const char *entry : content.entries) {
            if (QLatin1String(entry).isEmpty())
                menu->addSeparator();
            else
                menu->addAction(Tool(QString::fromLatin1(entry)));
        }
    };
    auto *options = new QMenu(QString::fromUtf8(OptionsMenu().caption), window);
    fill(options, OptionsMenu());
    options->setIcon(Icons::Of(QStringLiteral("configure")));
    for (const CommandMenu &content : CommandMenus()) {
        QMenu *menu = window->menuBar()->addMenu(QString::fromUtf8(content.caption));
        fill(menu, content);
        AddMenuKey(window->menuBar(), menu->menuAction());
    }
}

/// Some menus share their letter with one another or with a button of a child window, so each has its number
/// as well.
void CommandSet::AddMenuKey(QMenuBar *bar, QAction *menu)
{
    const auto number = static_cast<int>(bar->actions().size());
    const QKeySequence key(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + number));
    menu->setStatusTip(u"Menu " % key.toString(QKeySequence::NativeText));
    connect(new QShortcut(key, bar->window()), &QShortcut::activated, bar, [bar, menu] {
        if (menu->isEnabled())
            bar->setActiveAction(menu);
    });
}

void CommandSet::FillToolBar(QMainWindow *window)
{
    m_toolBar = window->addToolBar(QStringLiteral("Tools"));
    m_toolBar->setObjectName(QStringLiteral("ToolBar"));
    for (const char *entry : ToolBarCommands()) {
        const QString id = QString::fromLatin1(entry);
        const bool separatorLast =
            m_toolBar->actions().isEmpty() || m_toolBar->actions().last()->isSeparator();
        if (id.isEmpty() && !separatorLast)
            m_toolBar->addSeparator();
        // A command that can never be chosen would only take up space here; the menus show it greyed.
        if (!id.isEmpty() && m_available.value(id))
            m_toolBar->addAction(Tool(id));
    }
    if (m_toolBar->actions().last()->isSeparator())
        m_toolBar->removeAction(m_toolBar->actions().last());
    for (auto caption = BarCaptions().begin(); caption != BarCaptions().end(); ++caption) {
        auto *button = qobject_cast<QToolButton *>(m_toolBar->widgetForAction(Tool(caption.key())));
        if (button)
            button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
}

void CommandSet::Enable(const QString &id, bool enabled)
{
    if (QAction *tool = Tool(id))
        tool->setEnabled(enabled && m_available.value(id));
}

void CommandSet::EnableAll(bool enabled)
{
    for (const QString &id : m_tools.keys())
        Enable(id, enabled);
}

void CommandSet::HoldDrawing(bool hold)
{
    m_toolBar->setUpdatesEnabled(!hold);
}
