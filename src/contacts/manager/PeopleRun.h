#pragma once

#include "contacts/lists/PersonDetails.h"
#include "database/values/Keys.h"

#include <QString>

#include <functional>

class ListModel;
class Progress;
class QWidget;

/// What the screens do with people of whom there may be thousands runs under a box of progress.
namespace PeopleRun
{
/// Runs `work` under a box of that title. Where it is cancelled the user is told how far it came, and what
/// that means: "Stopped after 3 of 10 contacts. " and `stopped`. False then.
bool Run(QWidget *form, const QString &title, const QString &stopped,
         const std::function<void(Progress &progress)> &work);
/// The same for work that stores the people and gives whether it did: where it is cancelled, "Those are
/// `become`, the rest are not."
bool Store(QWidget *form, const QString &title, const QString &become,
           const std::function<bool(Progress &progress)> &work);
/// Fills `available` with the people of a characteristic, or with everybody where it is 0.
void FillSubset(QWidget *form, ConcessionRef concessionRef, ListModel &available,
                const QList<PersonDetail> &details = {});
/// The rows chosen in `available` join `selected`; who no longer exists leaves both lists.
void SelectChosen(QWidget *form, ListModel &available, ListModel &selected);
/// Reads the selected people again: changed names and addresses show, and who was deleted goes.
void Refresh(QWidget *form, ListModel &selected);
/// Publishes a selection for reports and merges. False where it was cancelled, and reports would miss some.
bool Publish(QWidget *form, const ListModel &selection);
} // namespace PeopleRun
