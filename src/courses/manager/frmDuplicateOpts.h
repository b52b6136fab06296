#pragma once

#include "forms/frames/FormDialog.h"

#include <array>

class QCheckBox;

/// "Duplicate Options": what a duplicate takes over from its course, in gDupCourseOpt.
class frmDuplicateOpts final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmDuplicateOpts(QWidget *parent = nullptr);

private:
    void Save();

    std::array<QCheckBox *, 7> m_options{}; ///< in the order of the bits
};
