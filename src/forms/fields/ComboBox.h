#pragma once

#include <QComboBox>

class ComboModel;

/// The view of a ComboModel: what is chosen travels both ways. Forms read the choice from the model. Its
/// width does not depend on its rows, so that long lists cost nothing.
class ComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboBox(ComboModel &model, QWidget *parent = nullptr);

    ComboModel &Model() const { return m_list; }
    void showPopup() override;

private:
    ComboModel &m_list;
    bool m_filling = false;
};
