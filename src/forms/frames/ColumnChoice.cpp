#include "forms/frames/ColumnChoice.h"

#include "controls/ListModel.h"
#include "forms/frames/WindowMemory.h"
#include "forms/lists/ListView.h"

#include <QHeaderView>
#include <QMenu>

#include <algorithm>

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): from left to right, as they show.
ColumnChoice::ColumnChoice(const QString &form, ListView *list, const QList<Column> &fixed,
                           const QList<Column> &offered)
    : QObject(list)
    , m_form(form)
    , m_list(list)
    , m_fixed(fixed)
    , m_offered(offered)
{
    for (const QVariant &column : WindowMemory::Recall(m_form).value(Name()).toList()) {
        const int number = column.toInt();
        if (number >= 0 && number < m_offered.size() && !m_chosen.contains(number))
            m_chosen.append(number);
    }
    std::sort(m_chosen.begin(), m_chosen.end());
    ShowColumns();
    list->header()->setContextMenuPolicy(Qt::CustomContextMenu);
    list->header()->setToolTip(QStringLiteral("Right click to choose the columns"));
    connect(list->header(), &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        QMenu menu(m_list);
        menu.setObjectName(QStringLiteral("ColumnMenu"));
        FillMenu(&menu);
        menu.exec(m_list->header()->mapToGlobal(at));
    });
}

QString ColumnChoice::Name() const
{
    return m_list->objectName() % u"_Columns";
}

void ColumnChoice::FillMenu(QMenu *menu)
{
    for (int column = 0; column < m_offered.size(); ++column) {
        QAction *action =
            menu->addAction(m_offered.at(column).title, this, [this, column] { Toggle(column); });
        action->setCheckable(true);
        action->setChecked(m_chosen.contains(column));
    }
}

void ColumnChoice::Toggle(int column)
{
    if (!m_chosen.removeOne(column))
        m_chosen.append(column);
    std::sort(m_chosen.begin(), m_chosen.end());
    QVariantMap settings = WindowMemory::Recall(m_form);
    settings.insert(Name(), QVariantList(m_chosen.begin(), m_chosen.end()));
    WindowMemory::Store(m_form, settings);
    const QStringList selected = m_list->Model().SelectedKeys();
    ShowColumns();
    m_list->Model().SelectKeys(selected);
    emit Changed();
}

void ColumnChoice::ShowColumns()
{
    QStringList titles;
    QList<int> chars;
    const auto show = [&](const Column &column) {
        titles.append(column.title);
        chars.append(column.chars);
    };
    std::for_each(m_fixed.begin(), m_fixed.end(), show);
    for (const int column : m_chosen)
        show(m_offered.at(column));
    m_list->Model().SetColumns(titles);
    m_list->SetColumnChars(chars, ListView::Narrow::Scroll);
}
