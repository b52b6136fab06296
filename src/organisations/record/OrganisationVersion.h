#pragma once

#include "database/statements/RecordMerge.h"
#include "database/values/Keys.h"
#include "organisations/record/OrganisationRecordODBC.h"

/// Storing an organisation's own row, also where another workstation stored the same one since the screen was
/// filled.

/// The version that a screen shows, or was filled from.
FieldValues Organisation_Values(const OrganisationRecord &record, const OrganisationLists &links);
/// The version that is stored; empty where the organisation is gone, and on an error.
FieldValues Organisation_StoredValues(OrganRef organRef);

/// Adds an organisation as typed. The new OrganRef; 0, after telling the user, where it exists; -1 on an
/// error.
int Organisation_Add(const OrganisationRecord &record);
/// Brings a screen up to what is stored now: what another workstation changed since `base` was read joins
/// `record` and `links`, and where both changed a field the user settles it. False on an error, and where the
/// user went back to the record.
bool Organisation_Meet(OrganRef organRef, OrganisationRecord &record, const OrganisationLists &links,
                       FieldValues &base);
/// Writes an organisation as typed, with what another workstation changed since `base` was read; `record`,
/// `links` and `base` are then what is stored, up to the links, which are the caller's to write. Results as
/// of Organisation_Add, -1 as well where the user went back to the record.
int Organisation_Update(OrganRef organRef, OrganisationRecord &record, const OrganisationLists &links,
                        FieldValues &base);
