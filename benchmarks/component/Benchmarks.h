// The comparisons, by control.
#pragma once

#include <unknwn.h>

namespace bench {

void RunSetControl(IClassFactory& factory);
void RunShowControl(IClassFactory& factory);
void RunArriving();
/// Of show controls.
void RunMemory(IClassFactory& factory);

}  // namespace bench
