// IEnumXxx over a list that was copied when the enumerator was made.
#pragma once

#include <ocidl.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Errors.h"

namespace comkit {

/// Item: what the list holds. Element: what Next hands out. copy(item, element) makes one element and may throw.
template <class Interface, class Element, class Item, void (*Copy)(const Item&, Element&),
          void (*Drop)(Element&) noexcept>
class Enumerator final : public ComObject<Enumerator<Interface, Element, Item, Copy, Drop>, Interface> {
public:
    using List = std::shared_ptr<const std::vector<Item>>;

    explicit Enumerator(std::vector<Item> items)
        : m_items(std::make_shared<const std::vector<Item>>(std::move(items))) {}
    Enumerator(List items, std::size_t next) : m_items(std::move(items)), m_next(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Element* out, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!out && count) return E_POINTER;
        if (!fetched && count != 1) return E_INVALIDARG;
        return Guarded([&] {
            ULONG done = 0;
            try {
                for (; done < count && m_next + done < m_items->size(); ++done)
                    Copy((*m_items)[m_next + done], out[done]);
            } catch (...) {
                while (done > 0) Drop(out[--done]);
                throw;
            }
            m_next += done;
            if (fetched) *fetched = done;
            return done == count ? S_OK : S_FALSE;
        });
    }

    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = m_items->size() - m_next;
        m_next += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE Reset() override {
        m_next = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Clone(Interface** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        return Guarded([&] { *out = MakeObject<Enumerator>(m_items, m_next).Detach(); });
    }

private:
    List m_items;
    std::size_t m_next = 0;
};

namespace detail {
template <class T>
void CopyPointer(const ComPtr<T>& item, T*& element) {
    item.CopyTo(&element);
}
template <class T>
void DropPointer(T*& element) noexcept {
    std::exchange(element, nullptr)->Release();
}
}  // namespace detail

template <class Interface, class T>
using PointerEnumerator = Enumerator<Interface, T*, ComPtr<T>, &detail::CopyPointer<T>, &detail::DropPointer<T>>;

}  // namespace comkit
