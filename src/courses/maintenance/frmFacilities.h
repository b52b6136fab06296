#pragma once

#include "courses/maintenance/ResourceDialog.h"

/// One facility.
class frmFacilities final : public ResourceDialog
{
    Q_OBJECT

public:
    explicit frmFacilities(QWidget *parent = nullptr);

private:
    ReadRow<Resource> Read(int key) override;
    int Add(const Resource &facility) override;
    int Update(int key, const Resource &facility) override;
};
