#pragma once

#include "controls/ComboModel.h"
#include "controls/ListModel.h"

#include <QWidget>

class ColumnChoice;
class FormBuilder;
class ListView;
class QMenu;
class QPushButton;
class TypedCombo;
class UsedAvailable;

/// "Contact Manager", the working list of people: find them, gather them in a selection, give them a
/// characteristic, open and delete their records. A child window of the main window.
class frmContact final : public QWidget
{
    Q_OBJECT

public:
    explicit frmContact(QWidget *parent = nullptr);

    /// Starts over on the database of the session.
    void Form_Refresh();
    /// Lists the people and the characteristics again, and keeps what is chosen and selected.
    void Refresh();

private:
    void BuildLists(FormBuilder &form);
    void BuildButtons(FormBuilder &form);
    void BuildMenu();
    void ApplyRights();
    void EnableButtons();
    void FillCharacteristics();
    void FillApplied();
    void FillContacts();
    void FillAnew();
    void RereadSelection();
    bool StoreSelection();
    bool DropDeleted(const QString &title);

    void AddSelected();
    void RemoveSelected();
    void ClearSelected();
    void DeleteChosen();
    void NewContact();
    void OpenChosen();
    void ViewContacts();
    void OpenReports();
    void Search();
    void ApplyCharacteristic();
    void NewCharacteristic(const QString &typed);
    void ShowMenu(ListView *list, const QPoint &at);

    ListModel m_contacts; ///< all people, or those of a characteristic
    ListModel m_selected;
    ComboModel m_subset;
    ComboModel m_characteristics;
    bool m_filling = false;

    ListView *m_contactList;
    ListView *m_contactInfo;
    ColumnChoice *m_columns;
    ListView *m_menuList = nullptr; ///< the one that the pop-up menu was asked on
    TypedCombo *m_charList;
    UsedAvailable *m_moves;
    QMenu *m_menu;
    QPushButton *m_applyBtn;
    QPushButton *m_delBtn;
    QPushButton *m_addBtn;
    QPushButton *m_viewBtn;
    QPushButton *m_repBtn;
    QPushButton *m_refreshBtn;
};
