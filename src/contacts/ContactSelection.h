#pragma once

class ComboModel;
class ListModel;

/// The two lists that people are picked with: those available (name) and those selected (name, address,
/// city, postcode), both under the key "?" + reference.

/// The rows chosen in `available` join `selected`, each person once, and are no longer chosen. Who does
/// not exist any more leaves both lists unmentioned.
void Contact_SelectChosen(ListModel &available, ListModel &selected);
/// Reads the selected people again: changed names and addresses show, and who was deleted goes.
void Contact_RefreshSelected(ListModel &selected);
/// Fills `available` with the people of a characteristic, or with everybody where it is 0.
void Contact_FillSubset(int concessionRef, ListModel &available);
/// Fills `subsets` with the characteristics behind a blank row that stands for everybody; what was chosen
/// stays chosen if it is still there.
void Contact_FillSubsetList(ComboModel &subsets);
/// Makes `selected` the students of a course as they are enrolled now. Where none are read, those that
/// `shown` lists stand in for them: a read that failed must not look like a course without students.
void Contact_SelectStudents(int courseRef, const ListModel &shown, ListModel &selected);
