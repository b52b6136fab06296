#pragma once

/// Makes 1, which stands for "nothing chosen", of every empty reference in `Contacts`, `Organisations`,
/// `Venues`, `Facilities`, `Exam` and `AwardNames`: lists and reports join those references and would lose
/// the record. Costs one query over indexes where there is nothing to mend. Errors are ignored.
void RepairReferences();
