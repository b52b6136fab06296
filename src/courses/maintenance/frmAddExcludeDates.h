#pragma once

#include "courses/maintenance/ExclusionODBC.h"
#include "forms/frames/ItemDialog.h"

class DateField;
class QLineEdit;

/// A period that a series of events can leave out.
class frmAddExcludeDates final : public ItemDialog
{
    Q_OBJECT

public:
    explicit frmAddExcludeDates(QWidget *parent = nullptr);

    /// Loads a period to change instead of adding one.
    void EditItem(int key);

private:
    int Store() override;
    bool IsPeriod();

    QLineEdit *m_refName;
    DateField *m_from;
    DateField *m_to;
};
