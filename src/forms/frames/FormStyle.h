#pragma once

/// The look that all screens share: the program's icon, and where its forms differ from the standard style.
/// Buttons have space around their captions and no pictures in message boxes; a frame without a title
/// reserves no space for one; a list with the focus is framed like a field; a list that can only be looked
/// at is drawn like a field; on dark palettes check boxes and options, which the style draws darker than the
/// window, get an outline; and the icon on the title bar of a window inside the main window is as legible as
/// its title.
void InstallFormStyle();
