#pragma once

#include <QString>

#include <compare>

/// An amount of money in whole hundredths of the currency unit, so that sums are exact and two amounts that
/// read alike are equal.
class Money final
{
public:
    constexpr Money() = default;
    static constexpr Money OfHundredths(qint64 hundredths) { return Money(hundredths); }
    /// The amount nearest to `units`, half away from zero on their shortest decimal text. What is beyond a
    /// million million units is cut to that.
    static Money Of(double units);

    constexpr qint64 Hundredths() const { return m_hundredths; }
    /// In currency units, for a statement or a box.
    constexpr double Units() const { return static_cast<double>(m_hundredths) / 100; }
    /// Grouped, with two decimals: what a money box shows.
    QString Text() const;

    constexpr Money operator-() const { return Money(-m_hundredths); }
    constexpr Money operator+(Money other) const { return Money(m_hundredths + other.m_hundredths); }
    constexpr Money operator-(Money other) const { return Money(m_hundredths - other.m_hundredths); }
    constexpr Money &operator+=(Money other) { return *this = *this + other; }
    constexpr Money &operator-=(Money other) { return *this = *this - other; }
    // NOLINTNEXTLINE(modernize-use-nullptr): the check takes the default for a pointer.
    friend constexpr auto operator<=>(Money, Money) = default;

private:
    explicit constexpr Money(qint64 hundredths)
        : m_hundredths(hundredths)
    {
    }
    qint64 m_hundredths = 0;
};
