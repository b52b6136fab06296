#pragma once

#include <Qt>

/// What the item models hold besides the text, for the delegate that draws it.
enum ItemRole { ImageRole = Qt::UserRole + 1, BoldRole, StruckRole, TickRole };
