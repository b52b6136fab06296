#pragma once

#include "database/statements/WholeSave.h"
#include "database/values/Keys.h"
#include "organisations/record/OrganisationVersion.h"

/// Stores an organisation as typed, added where `organRef` is 0, with people, characteristics, facilities and
/// venues in place of those it had, in one piece. Before that the user is asked about each that belongs to
/// another one: what stays there leaves the list. A question that comes again can be answered for all the
/// rest. What was deleted meanwhile leaves the lists as well, and the user is told. What another workstation
/// changed since `base` was read is joined first, as of Organisation_Update.
RecordSaved Organisation_Save(OrganRef organRef, OrganisationRecord &record, const OrganisationLists &links,
                              FieldValues &base, Progress &progress);
/// Offers the characteristics of a stored organisation to each of its people who lacks one of them. False on
/// an error, where `progress` is cancelled, and where the organisation is deleted meanwhile: those who were
/// reached have what the user said.
bool Organisation_OfferCharacteristics(OrganRef organRef, const ListModel &contacts, Progress &progress);
