#pragma once

/// What the keyboard does with buttons, in every window of the program. Enter presses the push button that
/// has the focus; a dialog's default button has it where none has. A mnemonic clicks its button at once: the
/// toolkit shows it pressed for a tenth of a second first, in which another dialog may open in front of it or
/// the button may be greyed. No shortcut reaches a window that has a modal one in front of it; until the
/// desktop has moved the focus, the toolkit would let it through.
namespace ButtonKeys
{
/// Once for all windows, however often it is called.
void Serve();
} // namespace ButtonKeys
