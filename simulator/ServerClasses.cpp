#include "framework/FrameworkNames.h"
#include "simulator/Collection.h"
#include "simulator/DeviceObject.h"
#include "simulator/HelpDefinition.h"
#include "simulator/HiddenControl.h"
#include "simulator/RegistryObject.h"
#include "simulator/Server.h"
#include "simulator/ServicesObject.h"
#include "simulator/VariablesObject.h"

namespace vexa {

namespace {

template <class T>
comkit::ComPtr<IUnknown> Make() {
    const auto object = comkit::MakeObject<T>();
    return comkit::ComPtr<IUnknown>(object->Identity());
}

constexpr ServerClass Classes[] = {
    {{0x5907C6F6, 0x74A3, 0x45F5, {0xBD, 0x7F, 0x30, 0x14, 0xCB, 0x52, 0x85, 0x23}},
     ProgId::HiddenControl,
     L"Vexa Hidden Control (simulated)",
     &Make<HiddenControl>},
    {{0x9F3BBC85, 0x349C, 0x4992, {0xBC, 0xEE, 0x3E, 0x76, 0xC1, 0xC3, 0xE0, 0x19}},
     ProgId::Collection,
     L"Vexa Collection (simulated)",
     &Make<Collection>},
    {{0x1D306802, 0xCD0F, 0x4FD4, {0x9E, 0x37, 0x60, 0x3E, 0x24, 0x2A, 0x6B, 0x4F}},
     ProgId::HelpDefinition,
     L"Vexa Help Definition (simulated)",
     &Make<HelpDefinition>},
    {{0xAA7BFE4B, 0x7733, 0x4625, {0xA0, 0x3D, 0x74, 0x1C, 0x07, 0x4E, 0x8F, 0xBB}},
     ProgId::Registry,
     L"Vexa Registry Access (simulated)",
     &Make<RegistryObject>},
    {{0x5D64092A, 0x1321, 0x464B, {0xB3, 0xB6, 0xDE, 0x36, 0x9C, 0x3F, 0xED, 0xD4}},
     ProgId::Services,
     L"Vexa User Services (simulated)",
     &Make<ServicesObject>},
    {{0xA49EB3D4, 0x93E1, 0x4B82, {0x88, 0x12, 0xC5, 0x67, 0x43, 0xCE, 0x87, 0x01}},
     L"VexaSimulator.Variables",
     L"Vexa Simulator Variables",
     &Make<VariablesObject>},
    {{0xBA5CD931, 0x1267, 0x46C2, {0xBE, 0x9A, 0x34, 0xEA, 0x9F, 0x3C, 0xC5, 0x1E}},
     L"VexaSimulator.Device",
     L"Vexa Simulator Device",
     &Make<DeviceObject>},
};

}  // namespace

std::span<const ServerClass> ServerClasses() noexcept {
    return Classes;
}

}  // namespace vexa
