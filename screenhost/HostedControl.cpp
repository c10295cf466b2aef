#include "screenhost/HostedControl.h"

#include <algorithm>
#include <limits>

#include "comkit/Dispatch.h"
#include "comkit/Errors.h"
#include "screenhost/ErrorText.h"
#include "screenhost/LateBound.h"
#include "screenhost/SectionBag.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr std::array<const char*, 4> PlaceKeys{"Left", "Top", "Width", "Height"};
constexpr std::array<double, 4> DefaultPlace{240, 240, 3600, 2400};
constexpr double LargestTwips = 30000 * 15.0;  // what a window's coordinates can hold
constexpr const char* ProgIdKey = "ProgID";

bool IsExtenderKey(std::string_view key) noexcept {
    return EqualWithoutCase(key, ProgIdKey) ||
           std::ranges::any_of(PlaceKeys, [&](const char* place) { return EqualWithoutCase(key, place); });
}

double PlaceFrom(const ScreenSection& section, std::size_t side) {
    const ScreenValue* const value = section.Find(PlaceKeys[side]);
    double twips = DefaultPlace[side];
    if (value && std::holds_alternative<std::int32_t>(*value)) twips = std::get<std::int32_t>(*value);
    if (value && std::holds_alternative<double>(*value)) twips = std::get<double>(*value);
    return std::clamp(twips, side < 2 ? -LargestTwips : 0.0, LargestTwips);
}

}  // namespace

HostedControl::HostedControl(ScreenContext& context, ScreenSection& section) : m_context(context), m_section(&section) {
    for (std::size_t side = 0; side < PlaceKeys.size(); ++side) m_twips[side] = PlaceFrom(section, side);
    Place();
}

std::string HostedControl::ProgId() const {
    const ScreenValue* const value = m_section->Find(ProgIdKey);
    if (!value || !std::holds_alternative<std::u16string>(*value)) return {};
    return Utf8FromUtf16(std::get<std::u16string>(*value));
}

void HostedControl::Place() {
    m_pixels.left = PixelsFromTwips(m_twips[0]);
    m_pixels.top = PixelsFromTwips(m_twips[1]);
    m_pixels.right = m_pixels.left + PixelsFromTwips(m_twips[2]);
    m_pixels.bottom = m_pixels.top + PixelsFromTwips(m_twips[3]);
}

void HostedControl::Open() {
    m_failure.clear();
    try {
        Telling(ProgId(), [&] {
            Create();
            Load();
            Connect();
            Activate();
        });
        m_context.log->Add("host", Name() + " is open in " + (m_context.userMode ? "run" : "design") + " mode");
    } catch (const TextError& error) {
        Close();
        m_failure = error.what();
        m_context.log->Add("error", Name() + ": " + m_failure);
    }
}

void HostedControl::Create() {
    if (ProgId().empty()) throw TextError("the section has no ProgID");
    comkit::ComPtr<IUnknown> object;
    comkit::ThrowIfFailed(CoCreateInstance(m_context.resolve(ProgId()), nullptr, CLSCTX_INPROC_SERVER,
                                           __uuidof(IUnknown), object.PutVoid()));
    m_control = object.As<IOleObject>();
    if (!m_control) throw TextError(ProgId() + " is no control");
    m_dispatch = m_control.As<IDispatch>();
    m_site = comkit::MakeObject<ControlSite>(static_cast<SiteOwner&>(*this));
    m_extender = comkit::MakeObject<screenhost::Extender>(static_cast<ExtenderOwner&>(*this));
}

bool HostedControl::HasOwnKeys() const {
    return std::ranges::any_of(m_section->Keys(), [](const std::string& key) { return !IsExtenderKey(key); });
}

void HostedControl::Load() {
    DWORD status = 0;
    m_control->GetMiscStatus(DVASPECT_CONTENT, &status);
    const bool siteFirst = (status & OLEMISC_SETCLIENTSITEFIRST) != 0;
    if (siteFirst) comkit::ThrowIfFailed(m_control->SetClientSite(m_site.Get()));
    m_bLoading = true;
    if (const auto persist = m_control.As<IPersistPropertyBag>()) {
        const auto bag = comkit::MakeObject<SectionBag>(*m_section, *m_context.log);
        const HRESULT hr = HasOwnKeys() ? persist->Load(bag.Get(), bag.Get()) : persist->InitNew();
        m_knownKeys = bag->KnownKeys();
        bag->Close();
        comkit::ThrowIfFailed(hr);
    } else if (const auto stream = m_control.As<IPersistStreamInit>()) {
        comkit::ThrowIfFailed(stream->InitNew());
    }
    m_bLoading = false;
    if (!siteFirst) comkit::ThrowIfFailed(m_control->SetClientSite(m_site.Get()));
}

void HostedControl::Connect() {
    const std::wstring name = Wide(Name());
    m_control->SetHostNames(L"ScreenHost", name.c_str());
    m_events = EventSink::Connect(*m_control.Get(), [this](const EventCall& call) { OnEvent(call); });
    const auto container = m_control.As<IConnectionPointContainer>();
    if (container && SUCCEEDED(container->FindConnectionPoint(__uuidof(IPropertyNotifySink), m_notifyPoint.Put())) &&
        FAILED(m_notifyPoint->Advise(static_cast<IPropertyNotifySink*>(m_site.Get()), &m_notifyCookie)))
        m_notifyPoint.Reset();
    OnAccelerators();
}

/// The file's size where it has one, else the control's own; and the control may want more than it was given.
void HostedControl::SizeAtOpening() {
    SIZEL own{};
    const bool hasOwn = SUCCEEDED(m_control->GetExtent(DVASPECT_CONTENT, &own)) && own.cx > 0 && own.cy > 0;
    SIZEL asked{HimetricFromPixels(WidthOf(m_pixels)), HimetricFromPixels(HeightOf(m_pixels))};
    if (hasOwn && !m_section->Find(PlaceKeys[2])) asked.cx = own.cx;
    if (hasOwn && !m_section->Find(PlaceKeys[3])) asked.cy = own.cy;
    m_control->SetExtent(DVASPECT_CONTENT, &asked);
    SIZEL taken{};
    if (FAILED(m_control->GetExtent(DVASPECT_CONTENT, &taken)) || taken.cx <= 0 || taken.cy <= 0) taken = asked;
    RECT pixels = m_pixels;
    pixels.right = pixels.left + PixelsFromHimetric(taken.cx);
    pixels.bottom = pixels.top + PixelsFromHimetric(taken.cy);
    TakePixels(pixels);
}

void HostedControl::Activate() {
    SizeAtOpening();
    comkit::ThrowIfFailed(
        m_control->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, m_site.Get(), 0, m_context.view, &m_pixels));
    m_inPlace = m_control.As<IOleInPlaceObject>();
}

void HostedControl::Close() noexcept {
    if (m_events) m_events->Disconnect();
    m_events.Reset();
    if (m_notifyPoint) m_notifyPoint->Unadvise(m_notifyCookie);
    m_notifyPoint.Reset();
    if (m_inPlace) m_inPlace->InPlaceDeactivate();
    m_inPlace.Reset();
    m_dispatch.Reset();
    if (m_control) {
        m_control->Close(OLECLOSE_NOSAVE);
        m_control->SetClientSite(nullptr);
    }
    m_control.Reset();
    if (m_site) m_site->Detach();
    m_site.Reset();
    if (m_extender) m_extender->Detach();
    m_extender.Reset();
    m_accelerators = {};
}

void HostedControl::SavePlace(std::string& last) {
    for (std::size_t side = 0; side < PlaceKeys.size(); ++side) {
        m_section->Put(PlaceKeys[side], static_cast<std::int32_t>(std::lround(m_twips[side])), last);
        last = PlaceKeys[side];
    }
}

void HostedControl::Save() {
    std::string last = ProgIdKey;
    if (IsOpen() || m_bMoved) SavePlace(last);
    const auto persist = m_control.As<IPersistPropertyBag>();
    if (!persist) return;
    SectionUpdate update(*m_section, m_knownKeys, last);
    const auto bag = comkit::MakeObject<SectionBag>(*m_section, update, *m_context.log);
    const HRESULT hr = persist->Save(bag.Get(), TRUE, FALSE);
    const std::vector<std::string> written = bag->KnownKeys();
    bag->Close();
    if (FAILED(hr)) throw TextError(Name() + " cannot be saved: " + ErrorText(hr));
    update.Finish();
    m_knownKeys.insert(m_knownKeys.end(), written.begin(), written.end());
}

IDispatch& HostedControl::Members() const {
    if (!m_extender) throw TextError(Name() + " is not open");
    return *m_extender;
}

HWND HostedControl::Window() const noexcept {
    HWND window = nullptr;
    if (m_inPlace && FAILED(m_inPlace->GetWindow(&window))) return nullptr;
    return window;
}

void HostedControl::SetPixelRect(const RECT& pixels) {
    SIZEL extent{HimetricFromPixels(WidthOf(pixels)), HimetricFromPixels(HeightOf(pixels))};
    const bool resized = WidthOf(pixels) != WidthOf(m_pixels) || HeightOf(pixels) != HeightOf(m_pixels);
    TakePixels(pixels);
    if (resized && m_control) {
        m_control->SetExtent(DVASPECT_CONTENT, &extent);
        SIZEL taken{};
        if (SUCCEEDED(m_control->GetExtent(DVASPECT_CONTENT, &taken)) && taken.cx > 0 && taken.cy > 0) {
            RECT actual = pixels;
            actual.right = actual.left + PixelsFromHimetric(taken.cx);
            actual.bottom = actual.top + PixelsFromHimetric(taken.cy);
            TakePixels(actual);
        }
    }
    if (m_inPlace) m_inPlace->SetObjectRects(&m_pixels, &m_pixels);
    if (m_context.onLayout) m_context.onLayout();
}

/// A side whose pixels did not change keeps its twips, or they would wander with every save.
void HostedControl::TakePixels(const RECT& pixels) {
    const std::array<int, 4> taken{static_cast<int>(pixels.left), static_cast<int>(pixels.top), WidthOf(pixels),
                                   HeightOf(pixels)};
    for (std::size_t side = 0; side < taken.size(); ++side)
        if (PixelsFromTwips(m_twips[side]) != taken[side]) m_twips[side] = TwipsFromPixels(taken[side]);
    m_pixels = pixels;
}

void HostedControl::OnPosRectChange(const RECT& pixels) {
    const bool changed = EqualRect(&pixels, &m_pixels) == FALSE;
    TakePixels(pixels);
    if (m_inPlace) m_inPlace->SetObjectRects(&m_pixels, &m_pixels);
    if (changed && m_context.onLayout) m_context.onLayout();
}

void HostedControl::SetPlace(std::size_t side, double twips) {
    m_twips.at(side) = std::clamp(twips, side < 2 ? -LargestTwips : 0.0, LargestTwips);
    PlaceAgain();
}

void HostedControl::PlaceAgain() {
    const RECT before = m_pixels;
    Place();
    const RECT pixels = m_pixels;
    m_pixels = before;
    SetPixelRect(pixels);
}

Box HostedControl::TwipBox() const noexcept {
    const auto side = [this](std::size_t i) { return static_cast<int>(std::lround(m_twips[i])); };
    return {side(0), side(1), side(2), side(3)};
}

void HostedControl::MoveTo(const Box& box) {
    if (box == TwipBox()) return;
    m_bMoved = true;
    const std::array<int, 4> sides{box.left, box.top, box.width, box.height};
    for (std::size_t i = 0; i < sides.size(); ++i)
        m_twips[i] = std::clamp(static_cast<double>(sides[i]), i < 2 ? -LargestTwips : 0.0, LargestTwips);
    PlaceAgain();
}

bool HostedControl::ShowProperties() {
    return m_control &&
           m_control->DoVerb(OLEIVERB_PROPERTIES, nullptr, m_site.Get(), 0, m_context.view, &m_pixels) == S_OK;
}

bool HostedControl::OnShowPropertyFrame() {
    if (m_context.userMode || !m_context.onProperties) return false;
    m_context.onProperties();
    return true;
}

void HostedControl::ShowAboutBox() {
    if (!m_dispatch) throw TextError(Name() + " is not open");
    const comkit::ComPtr<IDispatch> alive = m_dispatch;
    Telling(Name() + " has no about box",
            [&] { comkit::InvokeWith(*alive, DISPID_ABOUTBOX, DISPATCH_METHOD, std::array<VARIANT, 0>{}); });
}

bool HostedControl::IsVisible() const {
    const HWND window = Window();
    return window && (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE);
}

void HostedControl::SetVisible(bool visible) {
    if (m_control)
        m_control->DoVerb(visible ? OLEIVERB_SHOW : OLEIVERB_HIDE, nullptr, m_site.Get(), 0, m_context.view, &m_pixels);
}

void HostedControl::OnAccelerators() {
    m_accelerators = {};
    m_accelerators.cb = sizeof(m_accelerators);
    const auto control = m_control.As<IOleControl>();
    if (!control || FAILED(control->GetControlInfo(&m_accelerators))) m_accelerators.cAccel = 0;
}

bool HostedControl::OnMnemonic(MSG& message) {
    WORD command = 0;
    if (m_accelerators.cAccel == 0 || !IsAccelerator(m_accelerators.hAccel, m_accelerators.cAccel, &message, &command))
        return false;
    const auto control = m_control.As<IOleControl>();
    return control && SUCCEEDED(control->OnMnemonic(&message));
}

void HostedControl::OnAmbientChange(DISPID id) {
    if (const auto control = m_control.As<IOleControl>()) control->OnAmbientPropertyChange(id);
}

comkit::Variant HostedControl::Ambient(DISPID id) const {
    switch (id) {
        case DISPID_AMBIENT_USERMODE:
            return m_context.userMode;
        case DISPID_AMBIENT_UIDEAD:
        case DISPID_AMBIENT_SHOWGRABHANDLES:
        case DISPID_AMBIENT_SHOWHATCHING:
        case DISPID_AMBIENT_DISPLAYASDEFAULT:
            return false;
        case DISPID_AMBIENT_SUPPORTSMNEMONICS:
        case DISPID_AMBIENT_AUTOCLIP:
            return true;
        case DISPID_AMBIENT_DISPLAYNAME:
            return Wide(Name()).c_str();
        case DISPID_AMBIENT_FONT:
            return static_cast<IDispatch*>(m_context.font.Get());
        case DISPID_AMBIENT_BACKCOLOR:
            return static_cast<std::int32_t>(m_context.backColor);
        case DISPID_AMBIENT_FORECOLOR:
            return static_cast<std::int32_t>(m_context.foreColor);
        case DISPID_AMBIENT_LOCALEID:
            return static_cast<std::int32_t>(GetUserDefaultLCID());
        case DISPID_AMBIENT_SCALEUNITS:
            return L"Twip";
        case DISPID_AMBIENT_TEXTALIGN:
            return std::int16_t{0};
        default:
            return {};
    }
}

void HostedControl::OnPropertyChanged(DISPID id) {
    if (m_bLoading || !m_dispatch) return;
    const std::string member = id == DISPID_UNKNOWN ? "everything" : MemberName(*m_dispatch, id);
    m_context.log->Add("change", Name() + "." + member);
}

void HostedControl::OnEvent(const EventCall& call) {
    // A moving mouse would drown everything else.
    const bool isMove = EqualWithoutCase(call.name, "MouseMove");
    if (isMove && m_bLastWasMove) return;
    m_bLastWasMove = isMove;
    std::string text = Name() + "." + call.name;
    for (const auto& [argument, value] : call.arguments) text += " " + argument + "=" + DescribeVariant(*value);
    m_context.device->CollectLog(*m_context.log);  // what led to the event stands before it
    const bool isInput = call.name.starts_with("Mouse") || call.name.starts_with("Key");
    m_context.log->Add("event", text, isInput ? HostLog::Weight::Detail : HostLog::Weight::Plain);
    if (call.name == "GetDeviceDateTime") SupplyDeviceDateTime(call);
}

/// Hands the simulated device's clock to a control that asks for it. Without a device the event stays unanswered.
void HostedControl::SupplyDeviceDateTime(const EventCall& call) const {
    VARIANT* const now = call.Argument("dtNow");
    VARIANT* const daylightSaving = call.Argument("bEnableDST");
    if (!m_context.device->IsConnected() || !now || now->vt != (VT_BYREF | VT_VARIANT)) return;
    try {
        const double clock = m_context.device->Now();
        const bool saving = m_context.device->Value("nciDaylightSaving") == "1";
        VariantClear(now->pvarVal);
        now->pvarVal->vt = VT_DATE;
        now->pvarVal->date = clock;
        if (daylightSaving && daylightSaving->vt == (VT_BYREF | VT_BOOL))
            *daylightSaving->pboolVal = saving ? VARIANT_TRUE : VARIANT_FALSE;
        m_context.log->Add("host", Name() + " gets " + DescribeVariant(*now->pvarVal) + ", daylight saving " +
                                       (saving ? "on" : "off"));
    } catch (const TextError& error) {
        m_context.log->Add("error", error.what());
    }
}

}  // namespace screenhost
