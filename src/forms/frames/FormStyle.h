#pragma once

/// The look that all screens share: the program's icon, and what its forms do otherwise than the standard
/// style. Buttons have air around their captions and carry no pictures in boxes, a frame without a title
/// keeps no room for one, a list that has the focus is framed as a field is, a list that can only be looked
/// at is drawn as a field is, and on dark palettes check boxes and options, which the style draws darker than
/// the window, get an outline.
void InstallFormStyle();
