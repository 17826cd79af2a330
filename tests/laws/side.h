// side.h: the layout that something is of.
#pragma once

enum class Side { kOld, kNew };
