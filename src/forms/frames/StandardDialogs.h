#pragma once

/// Installs the real message boxes and choosers behind platform/Dialogs.h.
void InstallStandardDialogs();
