#include "forms/frames/OtherScreens.h"

OtherScreens::Openers &OtherScreens::Installed()
{
    static Openers openers;
    return openers;
}
