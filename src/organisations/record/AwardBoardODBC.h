#pragma once

#include "database/values/Keys.h"

class ComboModel;
class ListModel;

/// Data functions of the organisations that issue awards; column `Board` of `Organisations`, 1 = one of them.

/// Fills a drop-down list with the award boards, OrganRef as item data and the first item chosen.
void ADO_Organisation_FillListAwardBoard(ComboModel &list);
/// Fills a list with all organisations, keys "?" + OrganRef, the award boards checked. Nothing is selected.
void ADO_Organisations_GetAll(ListModel &list);
/// Says whether an organisation is an award board. False on an error.
bool ADO_Organisations_SetAwardFlag(OrganRef organRef, bool flag);
