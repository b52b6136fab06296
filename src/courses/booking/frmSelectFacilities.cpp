#include "courses/booking/frmSelectFacilities.h"

#include "courses/lists/CourseListODBC.h"

frmSelectFacilities::frmSelectFacilities(const SelectTarget &target, QWidget *parent)
    : SelectDialog(QStringLiteral("frmSelectFacilities"), QStringLiteral("Select Facilities"), target, parent)
{
    FormBuilder form(this);
    BuildLists(form,
               {QStringLiteral("FacAvail"), QStringLiteral("Facilities &Available"),
                QStringLiteral("FacUsed"), QStringLiteral("Facilities &Used")},
               Holders::Of::Facilities);
    ADO_Course_FillList2(m_available, QStringLiteral("Name"), QStringLiteral("FacilityRef"),
                         QStringLiteral("Facilities"));
    m_available.SelectFirst();
    ShowHolders();
}

void frmSelectFacilities::AddToTree()
{
    ResourceTree::AddToChosen(m_tree, ResourceTree::Kind::Facilities, m_used);
}
