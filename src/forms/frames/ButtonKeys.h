#pragma once

/// What the keyboard does with buttons, in every window of the program. Enter presses the push button that
/// has the focus, or the dialog's default button if none has. A mnemonic clicks its button at once: the
/// toolkit would first show it pressed for a tenth of a second, in which another dialog may open in front of
/// it or the button may be disabled. A mnemonic that nobody has does nothing. No shortcut reaches a window
/// after a modal one; the toolkit would let it through until the desktop has moved the focus.
namespace ButtonKeys
{
/// Installs this for all windows; further calls have no effect.
void Serve();
} // namespace ButtonKeys
