// Saving and loading of a control, as containers do it, for the tests of that.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "ControlFixture.h"

namespace component {

class PersistenceFixture : public ControlFixture {
protected:
    using ControlFixture::ControlFixture;

    comkit::ComPtr<TestBag> SaveBag(bool all) {
        auto bag = comkit::MakeObject<TestBag>();
        EXPECT_EQ(S_OK, As<IPersistPropertyBag>()->Save(bag.Get(), FALSE, all));
        return bag;
    }
    HRESULT LoadBag(TestBag& bag, TestErrorLog* log = nullptr) { return As<IPersistPropertyBag>()->Load(&bag, log); }
    bool IsDirty() { return As<IPersistStreamInit>()->IsDirty() == S_OK; }

    /// Every key as text, to compare two states.
    std::wstring State() {
        std::wstring state;
        const auto bag = SaveBag(true);
        for (const auto& [key, value] : bag->entries)
            state += key + L"=" + (key == L"Font" ? FontText(value.Get()) : Text(value.Get())) + L"\n";
        return state;
    }
    static std::wstring FontText(const VARIANT& value) {
        const auto font = comkit::ComPtr<IDispatch>::From(value.punkVal);
        std::wstring text;
        for (const wchar_t* part : {L"Name", L"Size", L"Bold", L"Italic", L"Underline", L"Strikethrough"})
            text += Text(comkit::Call(*font, part).Get()) + L" ";
        return text;
    }

    static comkit::ComPtr<IStream> StreamOf(std::span<const std::byte> bytes) {
        comkit::ComPtr<IStream> stream;
        CreateStreamOnHGlobal(nullptr, TRUE, stream.Put());
        stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
        Rewind(*stream);
        return stream;
    }
    static void Rewind(IStream& stream) { stream.Seek({}, STREAM_SEEK_SET, nullptr); }
    static std::vector<std::byte> BytesOf(IStream& stream) {
        STATSTG stat{};
        stream.Stat(&stat, STATFLAG_NONAME);
        std::vector<std::byte> bytes(stat.cbSize.LowPart);
        Rewind(stream);
        stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
        return bytes;
    }
    std::vector<std::byte> SaveStream() {
        const auto stream = StreamOf({});
        EXPECT_EQ(S_OK, As<IPersistStreamInit>()->Save(stream.Get(), FALSE));
        return BytesOf(*stream);
    }
    HRESULT LoadStream(std::span<const std::byte> bytes) {
        return As<IPersistStreamInit>()->Load(StreamOf(bytes).Get());
    }
};

}  // namespace component
