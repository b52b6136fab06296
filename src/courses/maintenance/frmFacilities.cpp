#include "courses/maintenance/frmFacilities.h"

#include "courses/maintenance/ResourceModule.h"

frmFacilities::frmFacilities(QWidget *parent)
    : ResourceDialog({QStringLiteral("frmFacilities"),
                      QStringLiteral("Define a Facility (e.g. OHP, Welding Torch, Trampoline)"),
                      QStringLiteral("FacName"), QStringLiteral("facility"), Right::Facilities,
                      Right::FacilityRates},
                     parent)
{
}

ReadRow<Resource> frmFacilities::Read(int key)
{
    return ADO_Course_ShowFacility(FacilityRef(key));
}

int frmFacilities::Add(const Resource &facility)
{
    return Facility_Add(facility);
}

int frmFacilities::Update(int key, const Resource &facility)
{
    return Facility_Update(FacilityRef(key), facility);
}
