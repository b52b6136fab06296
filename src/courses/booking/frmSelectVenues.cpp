#include "courses/booking/frmSelectVenues.h"

#include "courses/lists/CourseListODBC.h"

frmSelectVenues::frmSelectVenues(const SelectTarget &target, QWidget *parent)
    : SelectDialog(QStringLiteral("frmSelectVenues"), QStringLiteral("Select Venues"), target, parent)
{
    FormBuilder form(this);
    BuildLists(form,
               {QStringLiteral("VenueAvail"), QStringLiteral("Venues &Available"),
                QStringLiteral("VenueUsed"), QStringLiteral("Venues &Used"), QStringLiteral("AddVBtn"),
                QStringLiteral("RemVBtn"), QStringLiteral("ClearVBtn")},
               Holders::Of::Venues);
    ADO_Course_FillList2(m_available, QStringLiteral("Description"), QStringLiteral("VenueRef"),
                         QStringLiteral("Venues"));
    m_available.SelectFirst();
    ShowHolders();
}

void frmSelectVenues::AddToTree()
{
    ResourceTree::AddToChosen(m_tree, ResourceTree::Kind::Venues, m_used);
}
