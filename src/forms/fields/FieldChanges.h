#pragma once

#include "platform/desktop/Dialogs.h"

#include <QAbstractTableModel>

/// The rows of the box that settles changes: field, yours, theirs. The side that is kept has a check mark,
/// and changed values are bold.
class FieldChanges final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Field, Yours, Theirs, Columns };

    explicit FieldChanges(QList<Dialogs::FieldChange> changes, QObject *parent = nullptr);

    const QList<Dialogs::FieldChange> &Changes() const { return m_changes; }
    void Take(int row, bool theirs);
    void TakeAll(bool theirs);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QVariant Text(const Dialogs::FieldChange &change, int column) const;

    QList<Dialogs::FieldChange> m_changes;
};
