#pragma once

#include "contacts/manager/ContactSearchODBC.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "forms/frames/FormDialog.h"

class ContactSearchPage;
class FormBuilder;
class ListView;
class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabWidget;

/// Finds people by any mix of their data, characteristics and attributes. While a search runs, Escape and the
/// window's close button stop it.
class frmSearchContact final : public FormDialog
{
    Q_OBJECT

public:
    /// `target` is the list of selected people that SelectBtn hands the result to. gDialogResult is 1 where
    /// they were also published for reports, all of them.
    explicit frmSearchContact(ListModel &target, QWidget *parent = nullptr);

protected:
    bool MayLeave() override;

private:
    ContactSearchCriteria Criteria() const;
    void ShowLooked(int looked);
    void BuildCriteria(FormBuilder &form);
    void BuildResult(FormBuilder &form);
    QWidget *BuildProgress();
    void BuildButtons(FormBuilder &form);
    void BuildTree(QWidget *page, const QString &name, const QString &caption, const QString &emptyText,
                   TreeModel &tree);
    void ShowRunning(bool running);
    void EnableResult();

    void Find();
    void Clear();
    void ViewContacts();
    void HandOver();

    ListModel &m_target;
    ListModel m_found;
    TreeModel m_characteristics;
    TreeModel m_attributes;
    bool m_running = false;

    QTabWidget *m_tabs;
    ContactSearchPage *m_details;
    QGroupBox *m_logic;
    QRadioButton *m_and;
    QRadioButton *m_or;
    ListView *m_result;
    QProgressBar *m_animation;
    QLabel *m_looked;
    QPushButton *m_findBtn;
    QPushButton *m_stopBtn;
    QPushButton *m_clearBtn;
    QPushButton *m_viewBtn;
    QPushButton *m_selectBtn;
    QPushButton *m_exitBtn;
};
