#include "courses/manager/CourseMenu.h"

#include "forms/lists/TreeView.h"

#include <QShortcut>

CourseMenu::CourseMenu(TreeView *tree)
    : QMenu(tree->parentWidget())
    , m_tree(tree)
{
    setObjectName(QStringLiteral("ID_Folder"));
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { popup(m_tree->viewport()->mapToGlobal(at)); });
}

void CourseMenu::Add(const Tool &tool, const QKeySequence &key, Key kind)
{
    QAction *action = addAction(tool.caption());
    action->setObjectName(tool.name);
    connect(action, &QAction::triggered, this, tool.run);
    connect(this, &QMenu::aboutToShow, action, [action, tool, key] {
        action->setEnabled(tool.isOffered());
        const QString caption = tool.caption().replace(u'&', QStringLiteral("&&"));
        const QString keyText = key.toString(QKeySequence::NativeText);
        action->setText(keyText.isEmpty() ? caption : QString(caption % u'\t' % keyText));
    });
    if (kind == Key::OfTree)
        Bind(key, [tool] {
            if (tool.isOffered())
                tool.run();
        });
}

void CourseMenu::Bind(const QKeySequence &key, const std::function<void()> &run)
{
    auto *shortcut = new QShortcut(key, m_tree);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, run);
}
