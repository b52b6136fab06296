#pragma once

#include "controls/ListModel.h"

#include <QWidget>

class ModifiedMark;
class QPushButton;
class UsedAvailable;

/// The "Characteristics" tab: those that the course has, beside those that it could have.
class CharacteristicsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit CharacteristicsPage(QWidget *parent = nullptr);

    /// Lists all characteristics, those with a key of `offered` ("!" and reference) as the course's. False on
    /// an error.
    bool Show(const QStringList &offered);
    ListModel &Available() { return m_available; }
    ListModel &Used() { return m_used; }
    /// Whether they can be moved, as far as the user's rights allow it.
    void Allow(bool open);
    void Watch(ModifiedMark &modified);

private:
    void NewCharacteristic();

    ListModel m_available;
    ListModel m_used;
    UsedAvailable *m_moves = nullptr;
    QPushButton *m_new = nullptr;
    bool m_mayApply = false;
};
