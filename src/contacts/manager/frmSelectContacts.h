#pragma once

#include "contacts/manager/PeopleStore.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

class ListView;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class TreeModel;
class UsedAvailable;

/// The picker of people. `ExitBtn` hands the selected people over, but those who were deleted meanwhile;
/// Escape and the window's close button leave without it, and ask first if there is something to hand over.
/// gDialogResult is 1 when they were handed over.
class frmSelectContacts final : public FormDialog
{
    Q_OBJECT

public:
    enum class Mode {
        AddToList = 1,            ///< joins the target list
        EnrolOnCourse = 2,        ///< becomes the students of a course, starting with the present ones
        Attendance = 3,           ///< becomes those who attended an event, starting with the target list
        Candidates = 4,           ///< becomes the candidates of an assessment, starting with the target list
        OrganisationContacts = 5, ///< takes the place of an organisation's people, starting with these
        ReplaceList = 6,          ///< takes the place of the target list, starting with what that holds
        AddToTree = 7             ///< joins the selected attendance branches of a course's tree
    };

    explicit frmSelectContacts(QWidget *parent = nullptr);

    /// `target` is the caller's list; the modes that store the people want to know where.
    void Configure(Mode mode, ListModel &target, PeopleStore store = {});
    /// For the mode that fills a tree.
    void Configure(Mode mode, TreeModel &target);

protected:
    bool MayLeave() override;

private:
    /// How the selection differs from the one that it began with.
    struct Difference {
        int taken = 0;
        int dropped = 0;
        bool IsNone() const { return taken == 0 && dropped == 0; }
    };
    Difference Changed() const;
    QString WhatExitDoes() const;
    void Begin();
    void Build();
    void BuildMenu();
    void Connect();
    void StartWith(const ListModel &people);
    void ShowMenu(ListView *list, const QPoint &position);
    void FillSubset();
    void Refresh();
    void OnSelection(ListView *list);
    void AddContact();
    void ViewContacts();
    void Search();
    void HandOver();
    bool Deliver();
    bool FollowStored();

    Mode m_mode = Mode::AddToList;
    ListModel *m_target = nullptr;
    TreeModel *m_tree = nullptr;
    PeopleStore m_store;
    QSet<QString> m_known; ///< those who were stored when the selection was drawn up
    QSet<QString> m_begun; ///< those that handing over would not change anything for
    int m_shownSubset = 0; ///< the characteristic whose people are listed; 0 = everybody

    ComboModel m_subsets;
    ListModel m_available;
    ListModel m_selected;

    QLineEdit *m_search = nullptr;
    ListView *m_availableList = nullptr;
    ListView *m_selectedList = nullptr;
    ListView *m_viewed = nullptr;   ///< the one whose rows ViewBtn shows: where a row was chosen last
    ListView *m_menuList = nullptr; ///< the one that the pop-up menu was asked on
    UsedAvailable *m_moves = nullptr;
    QPushButton *m_new = nullptr;
    QPushButton *m_view = nullptr;
    QPushButton *m_find = nullptr;
    QPushButton *m_refresh = nullptr;
    QPushButton *m_exit = nullptr;
    QLabel *m_exitText = nullptr;
    QMenu *m_menu = nullptr;
};
