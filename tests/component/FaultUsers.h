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

/// Closes every dialog of this thread that stays for longer than a moment.
class DialogCloser {
public:
    DialogCloser();
    DialogCloser(const DialogCloser&) = delete;
    DialogCloser& operator=(const DialogCloser&) = delete;
    ~DialogCloser();
    static long Closed() noexcept;

private:
    UINT_PTR m_timer;
};

}  // namespace component
