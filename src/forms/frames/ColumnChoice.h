#pragma once

#include <QList>
#include <QObject>
#include <QString>

class ListView;
class QMenu;

/// Further columns of a list, which the user shows and hides in a menu on its header. What was chosen is
/// remembered with the windows.
class ColumnChoice final : public QObject
{
    Q_OBJECT

public:
    struct Column {
        QString title;
        int chars = 10; ///< its width, in average characters
    };

    /// `form` is the object name that the choice is remembered under, `fixed` the columns that always show.
    ColumnChoice(const QString &form, ListView *list, const QList<Column> &fixed,
                 const QList<Column> &offered);

    /// The columns that show, by their numbers in `offered`, ascending.
    const QList<int> &Chosen() const { return m_chosen; }
    /// Adds a checkable entry for each column.
    void FillMenu(QMenu *menu);

signals:
    /// The list has its new columns and waits for its rows.
    void Changed();

private:
    void Toggle(int column);
    void ShowColumns();
    QString Name() const;

    QString m_form;
    ListView *m_list;
    QList<Column> m_fixed;
    QList<Column> m_offered;
    QList<int> m_chosen;
};
