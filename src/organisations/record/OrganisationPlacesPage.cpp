#include "organisations/record/OrganisationPlacesPage.h"

#include "forms/frames/FormBuilder.h"

OrganisationPlacesPage::OrganisationPlacesPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    form.BeginGroup(QStringLiteral("Facilities"));
    const FormBuilder::Pair facilities =
        form.UsedAvailablePair({.available = QStringLiteral("AvailFac"),
                                .availableCaption = QStringLiteral("All facilities:"),
                                .used = QStringLiteral("UsedFac"),
                                .usedCaption = QStringLiteral("Facilities of this organisation:"),
                                .add = QStringLiteral("AddFBtn"),
                                .remove = QStringLiteral("RemFBtn"),
                                .clear = QStringLiteral("ClearFBtn")},
                               m_availFac, m_usedFac);
    form.EndGroup();
    form.BeginGroup(QStringLiteral("Venues"));
    const FormBuilder::Pair venues =
        form.UsedAvailablePair({.available = QStringLiteral("AvailVenues"),
                                .availableCaption = QStringLiteral("All venues:"),
                                .used = QStringLiteral("UsedVenues"),
                                .usedCaption = QStringLiteral("Venues of this organisation:"),
                                .add = QStringLiteral("AddVBtn"),
                                .remove = QStringLiteral("RemVBtn"),
                                .clear = QStringLiteral("ClearVBtn")},
                               m_availVenues, m_usedVenues);
    form.EndGroup();
    facilities.available->SetEmptyText(QStringLiteral("No further facilities."));
    facilities.used->SetEmptyText(QStringLiteral("No facilities."));
    venues.available->SetEmptyText(QStringLiteral("No further venues."));
    venues.used->SetEmptyText(QStringLiteral("No venues."));
    m_facMoves = facilities.moves;
    m_venueMoves = venues.moves;
}

void OrganisationPlacesPage::Clear()
{
    m_facMoves->Empty();
    m_venueMoves->Empty();
}

void OrganisationPlacesPage::SetLocked(bool locked)
{
    m_facMoves->Allow(!locked);
    m_venueMoves->Allow(!locked);
}
