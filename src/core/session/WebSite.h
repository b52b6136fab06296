#pragma once

#include <QString>

/// The address of the product's web site.
inline QString WebSite()
{
    return QStringLiteral("http://www.veltrane.example/");
}
