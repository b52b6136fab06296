#pragma once

#include <functional>

/// Keeps the windows painted while an engine waits for something outside the program.
namespace Painting
{
/// Installs the function that paints them; a program without windows installs none.
void Install(std::function<void()> paint);
/// Paints them. The user's input is not served until the engine is done.
void Keep();
} // namespace Painting
