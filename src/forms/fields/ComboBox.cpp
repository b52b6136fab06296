#include "forms/fields/ComboBox.h"

#include "controls/ComboModel.h"
#include "database/values/GlobalCode.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QListView>

ComboBox::ComboBox(ComboModel &model, QWidget *parent)
    : QComboBox(parent)
    , m_list(model)
{
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(14);
    setMaxVisibleItems(20);
    // A combo box picks a row by itself when its model is reset; the model's choice must win.
    connect(&m_list, &ComboModel::modelAboutToBeReset, this, [this] { m_filling = true; });
    setModel(&m_list);
    setCurrentIndex(m_list.Current());
    connect(this, &QComboBox::currentIndexChanged, this, [this](int row) {
        if (!m_filling)
            m_list.SetCurrent(row);
    });
    connect(&m_list, &ComboModel::CurrentChanged, this, [this](int row) {
        m_filling = false;
        setCurrentIndex(row);
    });
    connect(this, &QComboBox::currentTextChanged, this, &ComboBox::ShowInvitation);
    ShowInvitation(currentText());
}

/// What only invites to choose is dimmed, and without the blank that its text begins with.
void ComboBox::ShowInvitation(const QString &text)
{
    QLineEdit *edit = lineEdit();
    if (!edit)
        return;
    const bool isInvitation = text == SelectOrTypeNewText();
    QPalette colours;
    if (isInvitation)
        colours.setColor(QPalette::Text, QApplication::palette().color(QPalette::PlaceholderText));
    edit->setPalette(colours);
    QMargins margins = edit->textMargins();
    margins.setLeft(isInvitation ? -fontMetrics().horizontalAdvance(u' ') : 0);
    edit->setTextMargins(margins);
}

void ComboBox::changeEvent(QEvent *event)
{
    QComboBox::changeEvent(event);
    // The toolkit gives the palette of the box to the field in it, whatever that had of its own.
    if (event->type() == QEvent::PaletteChange)
        ShowInvitation(currentText());
}

void ComboBox::showPopup()
{
    // Rows of equal height need not be measured one by one.
    if (auto *rows = qobject_cast<QListView *>(view()))
        rows->setUniformItemSizes(true);
    QComboBox::showPopup();
}
