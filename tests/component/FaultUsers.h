// What designers and users do with controls and pages while the system or memory fails. What a scenario wants to have
// happened is counted in FaultRig::seen.
#pragma once

#include "FaultRig.h"

namespace component {

void UseEveryProperty(FaultRig& rig);
void AskAll(FaultRig& rig);
void Negotiate(FaultRig& rig);
void RaiseEvents(FaultRig& rig);
void MakeDesignedWithFrame(FaultRig& rig);
void UsePages(FaultRig& rig);
void ShowAboutBoxes(FaultRig& rig);
void RegisterForUser(FaultRig& rig);

}  // namespace component
