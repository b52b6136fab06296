#pragma once

#include "courses/booking/SelectDialog.h"

/// Chooses venues for the events whose venues are selected in a tree.
class frmSelectVenues final : public SelectDialog
{
    Q_OBJECT

public:
    explicit frmSelectVenues(const SelectTarget &target, QWidget *parent = nullptr);

protected:
    void AddToTree() override;
};
