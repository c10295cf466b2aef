// Receives a control's events, with their names and their arguments' names from its type information.
//
// Lives as long as the control keeps it; after Disconnect it swallows whatever still comes.
#pragma once

#include <ocidl.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "comkit/ComObject.h"

namespace screenhost {

struct EventCall {
    std::string name;
    /// In the order of the declaration. By-reference arguments may be written through their targets.
    std::vector<std::pair<std::string, VARIANT*>> arguments;

    /// Null when there is no argument of this name.
    VARIANT* Argument(std::string_view argument) const noexcept;
};

class EventSink final : public comkit::ComObject<EventSink, IDispatch> {
public:
    /// May throw ComError: the control sees the failure.
    using Handler = std::function<void(const EventCall&)>;

    /// Null when the control has no default event interface.
    static comkit::ComPtr<EventSink> Connect(IUnknown& control, Handler handler);
    void Disconnect() noexcept;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;

    void* FindInterface(REFIID iid) noexcept;

private:
    friend comkit::ComPtr<EventSink> comkit::MakeObject<EventSink>(comkit::ComPtr<ITypeInfo>&&, const IID&, Handler&&);
    EventSink(comkit::ComPtr<ITypeInfo> events, IID iid, Handler handler);

    comkit::ComPtr<ITypeInfo> m_events;
    IID m_iid;
    Handler m_handler;
    comkit::ComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
};

}  // namespace screenhost
