#pragma once

#include <QComboBox>

class ComboModel;

/// The view of a ComboModel: the choice is kept the same in both. Forms read it from the model. The width
/// does not depend on the rows, so that long lists cost nothing.
class ComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboBox(ComboModel &model, QWidget *parent = nullptr);

    ComboModel &Model() const { return m_list; }
    void showPopup() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void ShowInvitation(const QString &text);

    ComboModel &m_list;
    bool m_filling = false;
};
