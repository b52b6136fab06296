#include "contacts/manager/PeopleRun.h"

#include "contacts/manager/ContactSelection.h"
#include "core/session/Progress.h"
#include "forms/progress/ProgressBox.h"

bool PeopleRun::Run(QWidget *form, const QString &title, const QString &stopped,
                    const std::function<void(Progress &progress)> &work)
{
    return ProgressBox::Run(form, title, QStringLiteral("contacts"), stopped, work);
}

bool PeopleRun::Store(QWidget *form, const QString &title, const QString &become,
                      const std::function<bool(Progress &progress)> &work)
{
    bool done = false;
    Run(form, title, u"Those are " % become % u", the rest are not.",
        [&](Progress &progress) { done = work(progress); });
    return done;
}

void PeopleRun::FillSubset(QWidget *form, ConcessionRef concessionRef, ListModel &available,
                           const QList<PersonDetail> &details)
{
    Run(form, QStringLiteral("Available Contacts"), QStringLiteral("Those are listed, the rest are not."),
        [&](Progress &progress) { Contact_FillSubset(concessionRef, available, progress, details); });
}

void PeopleRun::SelectChosen(QWidget *form, ListModel &available, ListModel &selected)
{
    Run(form, QStringLiteral("Selected Contacts"), QStringLiteral("Those are selected, the rest are not."),
        [&](Progress &progress) { Contact_SelectChosen(available, selected, progress); });
}

void PeopleRun::Refresh(QWidget *form, ListModel &selected)
{
    Run(form, QStringLiteral("Selected Contacts"),
        QStringLiteral("Those are up to date, the rest are as they were."),
        [&](Progress &progress) { Contact_RefreshSelected(selected, progress); });
}

bool PeopleRun::Publish(QWidget *form, const ListModel &selection)
{
    return Run(form, QStringLiteral("Selected Contacts"),
               QStringLiteral("Reports and merges know of those, the rest are missing there."),
               [&](Progress &progress) {
                   SaveContactSelection(selection, QStringLiteral("CurrentContactSelection.txt"), progress);
               });
}
