#pragma once

/// Gives check boxes, options and the check marks of lists an outline where the palette is dark: the
/// standard style draws theirs darker than the window, and there they vanish.
void InstallDarkStyle();
