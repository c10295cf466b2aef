#include "showcontrol/ShowControlBindings.h"

#include "common/Errors.h"
#include "common/ResourceStrings.h"
#include "platform/HostError.h"
#include "showcontrol/ShowControl.h"

namespace kiv {

void ShowControlBindings::OnBadDataType() {
    RaisePropertyError(ShowControl::ClassName, m_context.Platform().container, ErrorNumber::InvalidPropertyValue,
                       residBadDataType);
}

}  // namespace kiv
