#pragma once

#include "controls/ListModel.h"
#include "courses/events/SeriesRun.h"
#include "forms/frames/FormDialog.h"

/// What a series could not book, event by event, to be copied or printed.
class frmUnbooked final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmUnbooked(const std::vector<UnbookedEvent> &events, QWidget *parent = nullptr);

private:
    ListModel m_list;
};
