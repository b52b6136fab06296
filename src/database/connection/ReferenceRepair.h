#pragma once

/// Sets every empty reference in `Contacts`, `Organisations`, `Venues`, `Facilities`, `Exam` and `AwardNames`
/// to 1, which means "nothing chosen": lists and reports join on those references and would lose the record.
/// Costs one query over indexes if there is nothing to repair. Errors are ignored.
void RepairReferences();
