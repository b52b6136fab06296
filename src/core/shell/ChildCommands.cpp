#include "core/shell/ChildCommands.h"

#include "forms/fields/FormKeys.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

namespace
{
struct Entry {
    QString name;
    QString caption;
    QKeySequence key;
};

QList<Entry> Entries()
{
    return {{QStringLiteral("ChildNew"), QStringLiteral("&New"), QKeySequence::New},
            {QStringLiteral("ChildFind"), QStringLiteral("&Find"), QKeySequence::Find},
            {QStringLiteral("ChildPrint"), QStringLiteral("&Print List…"), QKeySequence::Print},
            {QStringLiteral("ChildRefresh"), QStringLiteral("&Refresh"), Qt::Key_F5}};
}
} // namespace

ChildCommands::ChildCommands(QMenu *menu, QMdiArea *children)
    : QObject(menu)
{
    menu->addSeparator();
    for (const Entry &entry : Entries()) {
        // The child has the key itself; a second holder here would make it ambiguous.
        QAction *action =
            menu->addAction(entry.caption % u'\t' % entry.key.toString(QKeySequence::NativeText), this,
                            [children, key = entry.key] {
                                if (const QMdiSubWindow *child = children->activeSubWindow())
                                    FormKeys::Press(child, key);
                            });
        action->setObjectName(entry.name);
        connect(menu, &QMenu::aboutToShow, action, [action, children, key = entry.key] {
            const QMdiSubWindow *child = children->activeSubWindow();
            action->setEnabled(child && FormKeys::Serves(child, key));
        });
    }
}
