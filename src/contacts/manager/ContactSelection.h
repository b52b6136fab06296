#pragma once

#include "contacts/lists/PersonDetails.h"
#include "database/values/Keys.h"

#include <QSet>
#include <QString>

class ComboModel;
class ListModel;
class Progress;
class TreeModel;

/// The two lists that people are picked with: those available (name) and those selected (name, address,
/// city, postcode), both under the key "?" + reference. Thousands of people are looked up one by one: each
/// such run tells its progress, and ends early where that is cancelled or a read fails.

/// The rows chosen in `available` join `selected`, each person once, and are no longer chosen. Who does
/// not exist any more leaves both lists unmentioned. Rows that the run does not come to stay chosen.
void Contact_SelectChosen(ListModel &available, ListModel &selected, Progress &progress);
/// Reads the selected people again: changed names and addresses show, and who was deleted goes. Rows that
/// the run does not come to stay as they are.
void Contact_RefreshSelected(ListModel &selected, Progress &progress);
/// Takes those out of a selection who were deleted since, and tells their names: something is about to be
/// done to all of it. False on an error.
bool Contact_DropDeleted(ListModel &selected, const QString &title);
/// Fills `available` with the people of a characteristic, or with everybody where it is 0; `details` are the
/// sub-items.
void Contact_FillSubset(ConcessionRef concessionRef, ListModel &available, Progress &progress,
                        const QList<PersonDetail> &details = {});
/// Fills `subsets` with the characteristics after a blank row that stands for everybody; what was chosen
/// stays chosen if it is still there.
void Contact_FillSubsetList(ComboModel &subsets);
/// Makes `selected` the students of a course as they are enrolled now. Where none are read, those that
/// `shown` lists stand in for them: a read that failed must not look like a course without students. Who
/// the run does not come to has the name alone.
void Contact_SelectStudents(CourseRef courseRef, const ListModel &shown, ListModel &selected,
                            Progress &progress);
/// Brings a selection up to date that is to take the place of the people `stored` ("?" keys), of whom `known`
/// were there when it was drawn up: who was added elsewhere since joins it, who was removed elsewhere leaves
/// it, and the user is told their names. `known` is `stored` then. False on an error.
bool Contact_FollowStored(const QStringList &stored, QSet<QString> &known, ListModel &selected,
                          const QString &title);
/// Adds all rows of `people` to `selected` but those of a key that is there already.
void Contact_JoinSelection(const ListModel &people, ListModel &selected);
/// The same with the names alone.
void Contact_JoinNames(const ListModel &people, ListModel &selected);
/// Makes `selected` these people, with their names, addresses and towns.
void Contact_ReplaceSelection(const ListModel &people, ListModel &selected);
/// Adds people to each selected attendance branch of a course's tree ("A" + event), each once: key "A" +
/// reference + ";" + event. A selected attendee stands for the branch he is in.
void Contact_JoinTree(const ListModel &people, TreeModel &tree);
/// Publishes the "?" keys of a selection: in table `Ref`, which is emptied first and which all users of the
/// database share, and one a line in the file `fileName` of the folder `temp`, for the user's own use. Errors
/// are ignored.
void SaveContactSelection(const ListModel &selection, const QString &fileName, Progress &progress);
