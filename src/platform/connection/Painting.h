#pragma once

#include <functional>

/// The windows while an engine waits for something outside.
namespace Painting
{
/// Installs what paints them; the program without windows has none.
void Install(std::function<void()> paint);
/// Paints them. What the user does meanwhile waits too.
void Keep();
} // namespace Painting
