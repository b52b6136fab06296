#pragma once

#include "controls/ListModel.h"
#include "courses/booking/EventHours.h"
#include "courses/booking/HolderColumns.h"
#include "courses/booking/ResourceTree.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormDialog.h"

/// The tree that the dialogs below add to, at its selected nodes.
struct SelectTarget {
    TreeModel &tree;
    EventRef eventRef{}; ///< the only event that is selected; none (0) for several, and for those to come
    EventHours hours{};  ///< of that event
};

/// The frame of the dialogs that choose what the selected nodes of a tree get. Where that is one event, each
/// row says who holds it at that time. Exit adds what was chosen, Escape does not.
class SelectDialog : public FormDialog
{
    Q_OBJECT

protected:
    SelectDialog(const QString &name, const QString &title, const SelectTarget &target, QWidget *parent);

    /// The two lists, with the buttons between them and those of the dialog below.
    FormBuilder::Pair BuildLists(FormBuilder &form, const FormBuilder::PairNames &names, Holders::Of what);
    void ShowHolders();
    /// What else in the tree would hold it at that event: "" = nothing.
    virtual QString HeldInTree(EventRef eventRef, int itemRef) const;
    /// How many rows Exit would add.
    virtual int Chosen() const { return m_used.Count(); }
    virtual void AddToTree() = 0;
    bool MayLeave() override;

    TreeModel &m_tree;
    ListModel m_available;
    ListModel m_used;

private:
    EventRef m_eventRef;
    EventHours m_hours;
    HolderColumns m_holders;
};
