#include "win32/LabelAccess.h"

#include <oleauto.h>

#include <cstddef>
#include <utility>

#include "comkit/Bstr.h"
#include "comkit/ComObject.h"
#include "comkit/Errors.h"
#include "win32/AccessLibrary.h"

namespace kiv::win32 {

namespace {

using comkit::ComPtr;
using Source = std::shared_ptr<const LabelAccessSource>;

HRESULT Number(VARIANT* out, long value) noexcept {
    V_VT(out) = VT_I4;
    V_I4(out) = value;
    return S_OK;
}

void Empty(VARIANT* out) noexcept {
    if (out) V_VT(out) = VT_EMPTY;
}

/// The area on the screen.
RECT OnScreen(const LabelAccessSource::Place& place) noexcept {
    RECT area = place.area;
    MapWindowPoints(place.window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

class LabelAccess final : public comkit::ComObject<LabelAccess, IAccessible> {
public:
    explicit LabelAccess(std::weak_ptr<const LabelAccessSource> source) noexcept : m_source(std::move(source)) {}

    void* FindInterface(REFIID iid) noexcept {
        return IsEqualIID(iid, IID_IDispatch) ? static_cast<IAccessible*>(this) : nullptr;
    }

    // What it is
    STDMETHODIMP get_accName(VARIANT child, BSTR* out) override {
        return Tell(out, child, [&](const Source& source, std::size_t id) {
            const auto labels = source->LabelsForAccess();
            const std::size_t index = id == 0 ? 0 : id - 1;
            if (index >= labels.size() || labels[index].text.empty()) return S_FALSE;
            *out = comkit::Bstr(labels[index].text).Detach();
            return S_OK;
        });
    }
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* out) override {
        Empty(out);
        return Tell(out, child, [&](const Source&, std::size_t id) {
            return Number(out, id == 0 ? ROLE_SYSTEM_GROUPING : ROLE_SYSTEM_STATICTEXT);
        });
    }
    STDMETHODIMP get_accState(VARIANT child, VARIANT* out) override {
        Empty(out);
        return Tell(out, child, [&](const Source& source, std::size_t id) {
            const bool enabled =
                source->PlaceForAccess().isEnabled && (id == 0 || source->LabelsForAccess()[id - 1].isEnabled);
            return Number(out, (id == 0 ? 0 : STATE_SYSTEM_READONLY) | (enabled ? 0 : STATE_SYSTEM_UNAVAILABLE));
        });
    }

    // Where it is
    STDMETHODIMP get_accParent(IDispatch** out) override {
        return Tell(out, Self(), [&](const Source& source, std::size_t) {
            const LabelAccessSource::Place place = source->PlaceForAccess();
            ComPtr<IAccessible> standard;
            if (!place.window || FAILED(AccessLibrary::Get().CreateStandardObject(place.window, standard.PutVoid())))
                return S_FALSE;
            if (place.isOwnWindow) return standard->get_accParent(out);
            *out = standard.Detach();
            return S_OK;
        });
    }
    STDMETHODIMP get_accChildCount(long* out) override {
        if (out) *out = 0;
        return Tell(out, Self(), [&](const Source& source, std::size_t) {
            *out = static_cast<long>(source->LabelsForAccess().size());
            return S_OK;
        });
    }
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** out) override {
        // The labels are no objects of their own.
        return Tell(out, child, [](const Source&, std::size_t) { return S_FALSE; });
    }
    STDMETHODIMP accLocation(long* left, long* top, long* width, long* height, VARIANT child) override {
        if (!left || !top || !width || !height) return E_INVALIDARG;
        *left = *top = *width = *height = 0;
        return Tell(left, child, [&](const Source& source, std::size_t id) {
            const LabelAccessSource::Place place = source->PlaceForAccess();
            if (!place.window) return S_FALSE;
            RECT area = OnScreen(place);
            if (id > 0) {
                RECT label = source->LabelsForAccess()[id - 1].place;
                OffsetRect(&label, area.left, area.top);
                area = label;
            }
            *left = area.left;
            *top = area.top;
            *width = area.right - area.left;
            *height = area.bottom - area.top;
            return S_OK;
        });
    }
    STDMETHODIMP accHitTest(long x, long y, VARIANT* out) override {
        Empty(out);
        return Tell(out, Self(), [&](const Source& source, std::size_t) {
            const LabelAccessSource::Place place = source->PlaceForAccess();
            const RECT area = OnScreen(place);
            if (!place.window || !PtInRect(&area, {x, y})) return S_FALSE;
            const auto labels = source->LabelsForAccess();
            for (std::size_t i = 0; i < labels.size(); ++i)
                if (PtInRect(&labels[i].place, {x - area.left, y - area.top}))
                    return Number(out, static_cast<long>(i) + 1);
            return Number(out, CHILDID_SELF);
        });
    }
    STDMETHODIMP accNavigate(long direction, VARIANT start, VARIANT* out) override {
        Empty(out);
        return Tell(out, start, [&](const Source& source, std::size_t id) {
            const auto count = static_cast<long>(source->LabelsForAccess().size());
            const auto from = static_cast<long>(id);
            long to = 0;
            if (id == 0 && direction == NAVDIR_FIRSTCHILD) to = 1;
            if (id == 0 && direction == NAVDIR_LASTCHILD) to = count;
            if (id > 0 && direction == NAVDIR_NEXT) to = from + 1;
            if (id > 0 && direction == NAVDIR_PREVIOUS) to = from - 1;
            return to >= 1 && to <= count ? Number(out, to) : S_FALSE;
        });
    }

    // What it has not
    STDMETHODIMP get_accValue(VARIANT, BSTR* out) override { return Nothing(out); }
    STDMETHODIMP get_accDescription(VARIANT, BSTR* out) override { return Nothing(out); }
    STDMETHODIMP get_accHelp(VARIANT, BSTR* out) override { return Nothing(out); }
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, long* topic) override {
        if (topic) *topic = 0;
        return Nothing(file);
    }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR* out) override { return Nothing(out); }
    STDMETHODIMP get_accDefaultAction(VARIANT, BSTR* out) override { return Nothing(out); }
    STDMETHODIMP get_accFocus(VARIANT* out) override {
        Empty(out);
        return out ? S_FALSE : E_INVALIDARG;
    }
    STDMETHODIMP get_accSelection(VARIANT* out) override {
        Empty(out);
        return out ? S_FALSE : E_INVALIDARG;
    }
    STDMETHODIMP accSelect(long, VARIANT) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP accDoDefaultAction(VARIANT) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* out) override {
        if (!out) return E_POINTER;
        *out = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        return index == 0 ? AccessLibrary::TypeInfo(out) : DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        ComPtr<ITypeInfo> type;
        const HRESULT hr = AccessLibrary::TypeInfo(type.Put());
        return type ? type->GetIDsOfNames(names, count, ids) : hr;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* argument) override {
        ComPtr<ITypeInfo> type;
        const HRESULT hr = AccessLibrary::TypeInfo(type.Put());
        if (!type) return hr;
        return type->Invoke(static_cast<IAccessible*>(this), member, flags, arguments, result, exception, argument);
    }

private:
    static VARIANT Self() noexcept {
        VARIANT self{};
        Number(&self, CHILDID_SELF);
        return self;
    }
    static HRESULT Nothing(BSTR* out) noexcept {
        if (!out) return E_INVALIDARG;
        *out = nullptr;
        return S_FALSE;
    }
    static void Clear(BSTR* out) noexcept { *out = nullptr; }
    static void Clear(IDispatch** out) noexcept { *out = nullptr; }
    static void Clear(VARIANT*) noexcept {}
    static void Clear(long*) noexcept {}

    /// Calls the step with the source and the child's number, 0 for the area itself. The child must be there.
    template <class Out, class Step>
    HRESULT Tell(Out* out, const VARIANT& child, Step step) const noexcept {
        if (!out) return E_INVALIDARG;
        Clear(out);
        const Source source = m_source.lock();
        if (!source) return CO_E_OBJNOTCONNECTED;
        return comkit::Guarded([&] {
            if (V_VT(&child) != VT_I4 || V_I4(&child) < 0) return E_INVALIDARG;
            const auto id = static_cast<std::size_t>(V_I4(&child));
            return id <= source->LabelsForAccess().size() ? static_cast<HRESULT>(step(source, id)) : E_INVALIDARG;
        });
    }

    std::weak_ptr<const LabelAccessSource> m_source;
};

}  // namespace

ComPtr<IAccessible> MakeLabelAccess(std::weak_ptr<const LabelAccessSource> source) {
    return ComPtr<IAccessible>::Adopt(comkit::MakeObject<LabelAccess>(std::move(source)).Detach());
}

LRESULT AnswerLabelAccess(WPARAM wParam, std::weak_ptr<const LabelAccessSource> source) {
    const auto object = MakeLabelAccess(std::move(source));
    return AccessLibrary::Get().ResultFromObject(wParam, object.Get());
}

}  // namespace kiv::win32
