#pragma once

#include "contacts/manager/QuickFilter.h"
#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

class FieldNote;
class ListView;
class QLineEdit;
class QPushButton;

/// "Quick Filter": finds people by any part of a name, a telephone number, an e-mail address or a postcode
/// while it is typed, and opens them.
class frmQuickFilter final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmQuickFilter(QWidget *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Filter();
    void ViewContacts();

    QuickFilter m_filter;
    ListModel m_found;
    QLineEdit *m_entry;
    FieldNote *m_note;
    ListView *m_list;
    QPushButton *m_view;
};
