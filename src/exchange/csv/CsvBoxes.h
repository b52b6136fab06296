#pragma once

#include <QString>

/// Tells the user of an import; false, for the step that ends with it.
bool TellOfImport(const QString &text);
/// The same of an export.
bool TellOfExport(const QString &text);
