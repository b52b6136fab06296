#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class ModifiedMark;
class QAbstractButton;

/// Prev and Next over the list of keys that a record form was opened with.
class RecordNavigator final : public QObject
{
    Q_OBJECT

public:
    /// `save` runs if the user wants a changed record saved before moving on; the move happens whether it
    /// worked or not. `show` loads the record of a key.
    RecordNavigator(QAbstractButton *prev, QAbstractButton *next, ModifiedMark &modified,
                    std::function<void()> save, std::function<void(const QString &key)> show,
                    QObject *parent = nullptr);

    /// Takes a list of keys, and one of them as the current one, without loading it.
    void SetKeys(const QStringList &keys, int index = 0);
    int Index() const { return m_index; }
    int Count() const { return static_cast<int>(m_keys.size()); }
    QString Key() const { return m_keys.value(m_index); } ///< "" when the list is empty
    /// " (RECORD 2 OF 5)", for the caption; "" when the list is empty.
    QString Position() const;
    void Prev() { Go(-1); }
    void Next() { Go(1); }

private:
    void Go(int step);
    void EnableButtons();

    QAbstractButton *m_prev;
    QAbstractButton *m_next;
    ModifiedMark &m_modified;
    std::function<void()> m_save;
    std::function<void(const QString &)> m_show;
    QStringList m_keys;
    int m_index = 0;
};
