#pragma once

#include <QString>

/// Tells the user something about an import; returns false, for a step that ends with it.
bool TellOfImport(const QString &text);
/// The same about an export.
bool TellOfExport(const QString &text);
