#pragma once

#include "database/values/Keys.h"

#include <QString>

/// Data functions of the simple vocabularies of courses. Texts come already safe for SQL.

/// A table with a name and a reference.
struct CourseItemTable {
    QString table;
    QString keyColumn;
    QString nameColumn;
};

/// The new key; 0 where name and reference exist, -1 on an error.
int ADO_Course_AddItem(const CourseItemTable &table, const QString &name, const QString &referenceId);
/// `key`; 0 where another row has name and reference, -1 on an error.
int ADO_Course_UpdateItem(const CourseItemTable &table, int key, const QString &name,
                          const QString &referenceId);
/// Deletes a characteristic that courses offer, and takes it from them. False on an error.
bool ADO_Course_DeleteConcession(ConcessionRef concessionRef);
