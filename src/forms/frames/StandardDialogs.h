#pragma once

/// Installs the real message boxes and choosers for platform/Dialogs.h.
void InstallStandardDialogs();
