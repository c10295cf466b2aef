// The simulated device at the side of a screen: all its variables as they are, one of them to be changed, and the
// switches for a device that is not at its best.
//
// Its variables are read past all refusals, as whoever stands before the device sees them.
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "screenhost/DeviceLink.h"
#include "screenhost/WindowBase.h"

namespace screenhost {

class DevicePanel final : public WindowBase {
public:
    /// The device outlives the panel. Throws TextError.
    DevicePanel(HWND parent, int id, HFONT font, DeviceLink& device);

    /// Shows what has changed at the device.
    void Refresh();
    /// Enter and Escape in the field. True: done.
    bool Filter(const MSG& message);

    HWND List() const noexcept { return m_list; }
    int Width() const;
    /// Less cuts something off.
    int LeastHeight() const;
    /// Throws TextError where the device has no such variable.
    int RowOf(const std::string& variable) const;
    std::string ShownValue(const std::string& variable) const;

    /// A variable was set, or the reason why it could not be.
    std::function<void(const std::string& text, bool failed)> onMessage;

private:
    struct Row {
        std::string name;
        std::string value;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnNotify(const NMHDR& header);
    void OnButton(int id);
    void Fill();
    void Enable(bool enabled);
    void Layout() const;
    void ShowRow(int row, const std::string& value);
    int ChosenRow() const;
    void TakeIntoField();
    void SetFromField();

    DeviceLink& m_device;
    HWND m_title = nullptr;
    HWND m_list = nullptr;
    HWND m_label = nullptr;
    HWND m_field = nullptr;
    HWND m_set = nullptr;
    std::array<HWND, DeviceSwitches> m_switches{};
    std::vector<Row> m_rows;
};

}  // namespace screenhost
