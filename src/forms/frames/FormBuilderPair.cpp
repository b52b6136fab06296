// A part of FormBuilder.h.
#include "forms/frames/FormBuilder.h"

#include "controls/ListModel.h"
#include "core/icons/Icons.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace
{
/// Shares the width between a pair of lists: one with more columns than the other needs more, and columns
/// that the user adds later widen theirs.
void ShareBetween(QHBoxLayout *columns, const ListModel &available, const ListModel &used)
{
    static constexpr int half = 4;
    const int start = available.columnCount();
    const auto share = [columns, &available, start] {
        columns->setStretch(0, qMin(+half, half / 2 + available.columnCount() - start));
    };
    share();
    columns->setStretch(2, used.columnCount() > start ? half : half / 2);
    QObject::connect(&available, &ListModel::modelReset, columns, share);
}
} // namespace

FormBuilder::Pair FormBuilder::UsedAvailablePair(const PairNames &names, ListModel &available,
                                                 ListModel &used)
{
    Pair pair{};
    BeginColumns();
    pair.available = List(names.available, names.availableCaption, available, ListView::Choice::Multi);
    Pop();

    auto *buttons = new QVBoxLayout;
    QHBoxLayout *columns = Top().columns;
    columns->addLayout(buttons);
    buttons->addStretch();
    const auto button = [&](const QString &name, const QString &icon, const QString &caption) {
        QPushButton *made = NewButton(name, caption);
        made->setIcon(Icons::Of(icon));
        buttons->addWidget(made);
        return made;
    };
    pair.add = button(names.add, QStringLiteral("go-next"), QStringLiteral("Add"));
    pair.remove = button(names.remove, QStringLiteral("go-previous"), QStringLiteral("Remove"));
    pair.clear = button(names.clear, QStringLiteral("edit-clear-all"), QStringLiteral("Clear"));
    buttons->addStretch();

    auto *grid = new QGridLayout;
    columns->addLayout(grid);
    Push(Top().parent, grid);
    pair.used = List(names.used, names.usedCaption, used, ListView::Choice::Multi);
    EndColumns();
    ShareBetween(columns, available, used);
    pair.moves = new UsedAvailable(pair.available, pair.used, pair.add, pair.remove, pair.clear, m_page);
    return pair;
}
