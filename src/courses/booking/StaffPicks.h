#pragma once

#include "forms/fields/UsedAvailable.h"

class ListModel;

/// What the buttons between the lists of staff do. A row with the key "-" stands for a post that nobody fills
/// yet: it stays available, and each time it is added the event gets one more post, "--1", "--2" and so on,
/// which goes when it is removed.
namespace StaffPicks
{
UsedAvailable::Actions Actions(ListModel &available, ListModel &used);
} // namespace StaffPicks
