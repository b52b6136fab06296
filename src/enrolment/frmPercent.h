#pragma once

#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

/// The courses whose students are to get a characteristic's new discount.
class frmPercent final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmPercent(const QStringList &titles, QWidget *parent = nullptr);

    /// Shows the form and gives the positions that were selected; none when it was left without Apply.
    static QList<int> Choose(const QStringList &titles);

private:
    ListModel m_courses;
};
