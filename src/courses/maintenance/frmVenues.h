#pragma once

#include "courses/maintenance/ResourceDialog.h"

/// One venue.
class frmVenues final : public ResourceDialog
{
    Q_OBJECT

public:
    explicit frmVenues(QWidget *parent = nullptr);

private:
    ReadRow<Resource> Read(int key) override;
    int Add(const Resource &venue) override;
    int Update(int key, const Resource &venue) override;
};
