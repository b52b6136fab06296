#pragma once

#include "database/values/Keys.h"

#include <QWidget>

class QPlainTextEdit;

/// The "Courses" tab of a person: the history of courses and payments, to read.
class ContactCoursesPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ContactCoursesPage(QWidget *parent = nullptr);

    /// Reads the history of a saved person; 0 empties the page.
    void ShowHistory(ContactRef contactRef);

private:
    QPlainTextEdit *m_text;
};
