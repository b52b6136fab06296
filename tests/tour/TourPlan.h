#pragma once

#include <QString>
#include <QStringList>

class TourDriver;

/// What the tour works with, and what it finds on its way.
struct TourPlan {
    QString programFolder;
    QString databaseFile;
    QString peopleFile;
    int people = 0;       ///< lines of data in the people file
    QStringList students; ///< the names that are enrolled, as the lists show them
};

// The chapters of the tour, in their order. Each queues its steps.
void AddFirstStart(TourDriver &tour, TourPlan &plan);
void AddUser(TourDriver &tour);
void AddDatabaseOptions(TourDriver &tour);
void AddImport(TourDriver &tour, TourPlan &plan);
void AddCharacteristics(TourDriver &tour, TourPlan &plan);
void AddCourse(TourDriver &tour);
void AddEnrolment(TourDriver &tour, TourPlan &plan);
void AddPayments(TourDriver &tour, TourPlan &plan);
void AddReport(TourDriver &tour, TourPlan &plan);
void AddSecondStart(TourDriver &tour, TourPlan &plan);
