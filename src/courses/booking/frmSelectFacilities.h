#pragma once

#include "courses/booking/SelectDialog.h"

/// Chooses facilities for the events whose facilities are selected in a tree.
class frmSelectFacilities final : public SelectDialog
{
    Q_OBJECT

public:
    explicit frmSelectFacilities(const SelectTarget &target, QWidget *parent = nullptr);

protected:
    void AddToTree() override;
};
