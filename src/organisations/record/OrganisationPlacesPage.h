#pragma once

#include "controls/ListModel.h"

#include <QWidget>

class UsedAvailable;

/// The "Facilities/Venues" tab of an organisation: what it owns.
class OrganisationPlacesPage final : public QWidget
{
    Q_OBJECT

public:
    explicit OrganisationPlacesPage(QWidget *parent = nullptr);

    void Clear();
    void SetLocked(bool locked);

    ListModel &AvailFac() { return m_availFac; }
    ListModel &UsedFac() { return m_usedFac; }
    ListModel &AvailVenues() { return m_availVenues; }
    ListModel &UsedVenues() { return m_usedVenues; }

private:
    ListModel m_availFac;
    ListModel m_usedFac;
    ListModel m_availVenues;
    ListModel m_usedVenues;
    UsedAvailable *m_facMoves;
    UsedAvailable *m_venueMoves;
};
