#pragma once

#include <QString>
#include <QStringList>

class Keyboard;
class TourDriver;

/// What the tour works with, and what it finds on its way.
struct TourPlan {
    QString programFolder;
    QString databaseFile;
    QString peopleFile;
    int people = 0;       ///< lines of data in the people file
    QStringList students; ///< the names of those enrolled, as the lists show them
    QStringList members;  ///< the names of the group of three
    QString employer;     ///< the organisation that one of them stays with
    int found = 0;        ///< people whom the search found, or the import updates
    QString exported;     ///< the data as it was exported
};

/// Rows of data that a statement returns, -1 if it fails.
int RowsOf(const QString &sql);
/// The first column of its first row.
QString TextOf(const QString &sql);
/// The ContactRef of a person, named as in the lists.
QString KeyOf(const QString &person);

// The chapters of the first act, the main job, in their order. Each queues its steps.
void AddFirstStart(TourDriver &tour, TourPlan &plan);
void AddUser(TourDriver &tour);
void AddDatabaseOptions(TourDriver &tour);
void AddImport(TourDriver &tour, TourPlan &plan);
void AddCharacteristics(TourDriver &tour, TourPlan &plan);
void AddCourse(TourDriver &tour);
void AddEnrolment(TourDriver &tour, TourPlan &plan);
void AddPayments(TourDriver &tour, TourPlan &plan);
void AddReport(TourDriver &tour, TourPlan &plan);

// The chapters of the second act, the people and the organisations, using keys alone.
void AddReferenceLists(Keyboard &keys);
void AddGroupTypes(Keyboard &keys);
void AddRoleTypes(Keyboard &keys);
void AddAttributes(Keyboard &keys);
void AddGroup(Keyboard &keys, TourPlan &plan);
void AddRoles(Keyboard &keys, TourPlan &plan);
void AddPersonsAttributes(Keyboard &keys, TourPlan &plan);
void AddSecondGroupType(Keyboard &keys, TourPlan &plan);
void AddOrganisation(Keyboard &keys, TourPlan &plan);
void AddSearch(Keyboard &keys, TourPlan &plan);
void AddLetterheadReports(TourDriver &tour, Keyboard &keys, TourPlan &plan);
void AddExchange(Keyboard &keys, TourPlan &plan);

// The chapters of the third act, the courses, using keys alone.
void AddCourseLists(Keyboard &keys);
void AddVenuesAndFacilities(Keyboard &keys, TourPlan &plan);
void AddFreeDates(Keyboard &keys);
void AddFolders(Keyboard &keys);
void AddClipboard(Keyboard &keys);
void AddDuplicate(Keyboard &keys, TourPlan &plan);

// The last chapter.
void AddSecondStart(TourDriver &tour, TourPlan &plan);
