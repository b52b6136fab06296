#pragma once

#include "torture/MonkeyDeed.h"

#include <iterator>
#include <random>

/// Decides what the monkey does next: at random, from what is on the screen. The same seed with the same
/// windows does the same.
class MonkeyMind final
{
public:
    explicit MonkeyMind(unsigned seed)
        : m_random(seed)
    {
    }

    MonkeyDeed Next();
    /// A number from 0 up to but not including `end`.
    int Below(int end);

private:
    MonkeyDeed Key();
    MonkeyDeed Mnemonic(const QWidget *window);
    MonkeyDeed AtWidget(const QWidget *window);
    MonkeyDeed Splash(const QWidget *window);
    template <typename Values>
    auto Any(const Values &values) -> decltype(values[0])
    {
        return values[static_cast<size_t>(Below(static_cast<int>(std::size(values))))];
    }

    std::mt19937 m_random;
};
