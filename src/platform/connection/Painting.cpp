#include "platform/connection/Painting.h"

namespace
{
std::function<void()> &Installed()
{
    static std::function<void()> paint;
    return paint;
}
} // namespace

void Painting::Install(std::function<void()> paint)
{
    Installed() = std::move(paint);
}

void Painting::Keep()
{
    if (Installed())
        Installed()();
}
