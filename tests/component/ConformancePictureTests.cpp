// Pictures of the control: on the screen, in metafiles, with and without windows; and the data object that offers them.
#include <algorithm>
#include <functional>
#include <vector>

#include "ControlFixture.h"
#include "Sheet.h"

namespace component {
namespace {

using comkit::ComPtr;

class ReleasedMedium : public STGMEDIUM {
public:
    ReleasedMedium() : STGMEDIUM{} {}
    ReleasedMedium(const ReleasedMedium&) = delete;
    ReleasedMedium& operator=(const ReleasedMedium&) = delete;
    ~ReleasedMedium() { ReleaseStgMedium(this); }
};

class DataSink final : public comkit::ComObject<DataSink, IAdviseSink> {
public:
    int dataChanges = 0;
    int viewChanges = 0;
    int closes = 0;
    bool mediumWasFilled = false;
    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM* medium) override {
        ++dataChanges;
        mediumWasFilled = medium->tymed == TYMED_ENHMF && medium->hEnhMetaFile;
    }
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { ++viewChanges; }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override {}
    void STDMETHODCALLTYPE OnClose() override { ++closes; }
};

FORMATETC Format(CLIPFORMAT format, DWORD medium) {
    return {format, nullptr, DVASPECT_CONTENT, -1, medium};
}

class Pictures : public BothControls {
protected:
    HRESULT DrawInto(HDC dc, DWORD aspect = DVASPECT_CONTENT) {
        const RECTL bounds{0, 0, Sheet::Width, Sheet::Height};
        return As<IViewObject2>()->Draw(aspect, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
    }
    Sheet Drawn(DWORD aspect = DVASPECT_CONTENT) {
        return Sheet([&](HDC dc) { EXPECT_EQ(S_OK, DrawInto(dc, aspect)); });
    }
    bool IsSet() const { return &tested == &SetClass; }
    /// The show control with an edge, and as large as the sheet: stretched in one direction alone, its texts would be
    /// other ones.
    void PlacePicture(bool userMode) {
        Place(userMode);
        if (IsSet()) return;
        Put(L"BorderStyle", 1);
        const comkit::WindowDc screen(nullptr);
        const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSX);
        SIZEL extent{MulDiv(Sheet::Width, 2540, dpi), MulDiv(Sheet::Height, 2540, dpi)};
        EXPECT_EQ(S_OK, As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent));
        site->position = {20, 30, 20 + Sheet::Width, 30 + Sheet::Height};
    }
    /// Surround, two frames, captions, title, its text, days, trailing days; or two labels' ground, text and edge.
    std::size_t FewestColors() const { return IsSet() ? 5 : 3; }
};

TEST_P(Pictures, TheInactiveControlLooksAsTheActiveOneDoes) {
    PlacePicture(true);
    if (IsSet()) Put(L"UsePCDateTime", false);
    const Sheet before = Drawn();
    EXPECT_GE(before.Colors(), FewestColors());
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    const Sheet active = Drawn();
    EXPECT_GE(active.Colors(), FewestColors());
    ASSERT_EQ(S_OK, As<IOleInPlaceObject>()->InPlaceDeactivate());
    EXPECT_LT(Drawn().DifferenceTo(active), 0.03) << "only a blinking or ticking detail may differ";
    Put(L"BackColor", 0xFF);
    EXPECT_GT(Drawn().DifferenceTo(active), 0.1) << "the picture follows the properties";
}

TEST_P(Pictures, PrintersAndTheScreenGetTheSameAspect) {
    PlacePicture(false);
    EXPECT_LT(Drawn(DVASPECT_DOCPRINT).DifferenceTo(Drawn()), 0.01);
    const comkit::WindowDc screen(site->Window());
    EXPECT_EQ(S_OK, DrawInto(screen.Get()));
    EXPECT_EQ(DV_E_DVASPECT, DrawInto(screen.Get(), DVASPECT_ICON));
    EXPECT_EQ(E_INVALIDARG, As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, screen.Get(),
                                                     nullptr, nullptr, nullptr, 0))
        << "it has no place in the container's window";
}

TEST_P(Pictures, AMetafilePlaysThePictureOfTheScreen) {
    PlacePicture(false);
    const Sheet direct = Drawn();
    const comkit::WindowDc screen(nullptr);
    const HDC recording = CreateEnhMetaFileW(screen.Get(), nullptr, nullptr, nullptr);
    ASSERT_TRUE(recording);
    EXPECT_EQ(S_OK, DrawInto(recording));
    const HENHMETAFILE file = CloseEnhMetaFile(recording);
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(file, sizeof(header), &header);
    const RECTL& edge = header.rclBounds;
    EXPECT_NEAR(Sheet::Width, edge.right - edge.left, 2);
    const RECT whole{edge.left, edge.top, edge.right + 1, edge.bottom + 1};
    const Sheet played([&](HDC dc) { PlayEnhMetaFile(dc, file, &whole); });
    DeleteEnhMetaFile(file);
    EXPECT_GE(played.Colors(), FewestColors());
    EXPECT_LT(played.DifferenceTo(direct), 0.25) << "the frame's millimetres scale it a little";
}

TEST_P(Pictures, TheDataObjectHandsOutBothKindsOfMetafile) {
    PlacePicture(false);
    const Sheet direct = Drawn();
    const auto data = As<IDataObject>();
    FORMATETC enhanced = Format(CF_ENHMETAFILE, TYMED_ENHMF | TYMED_HGLOBAL);
    ReleasedMedium medium;
    ASSERT_EQ(S_OK, data->GetData(&enhanced, &medium));
    ASSERT_EQ(static_cast<DWORD>(TYMED_ENHMF), medium.tymed);
    EXPECT_EQ(nullptr, medium.pUnkForRelease);
    SIZEL extent{};
    As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent);
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(medium.hEnhMetaFile, sizeof(header), &header);
    EXPECT_NEAR(extent.cx, header.rclFrame.right - header.rclFrame.left, 60) << "0.01 mm";
    EXPECT_NEAR(extent.cy, header.rclFrame.bottom - header.rclFrame.top, 60);
    const RECT whole{0, 0, Sheet::Width, Sheet::Height};
    const Sheet played([&](HDC dc) { PlayEnhMetaFile(dc, medium.hEnhMetaFile, &whole); });
    EXPECT_GE(played.Colors(), FewestColors());
    EXPECT_LT(played.DifferenceTo(direct), 0.2);

    FORMATETC plain = Format(CF_METAFILEPICT, TYMED_MFPICT);
    ReleasedMedium second;
    ASSERT_EQ(S_OK, data->GetData(&plain, &second));
    ASSERT_EQ(static_cast<DWORD>(TYMED_MFPICT), second.tymed);
    const auto* picture = static_cast<const METAFILEPICT*>(GlobalLock(second.hMetaFilePict));
    ASSERT_TRUE(picture);
    EXPECT_EQ(MM_ANISOTROPIC, picture->mm);
    EXPECT_EQ(extent.cx, picture->xExt);
    EXPECT_EQ(extent.cy, picture->yExt);
    const Sheet old([&](HDC dc) {
        SetMapMode(dc, MM_ANISOTROPIC);
        SetViewportExtEx(dc, Sheet::Width, Sheet::Height, nullptr);
        PlayMetaFile(dc, picture->hMF);
    });
    // Into a part of the sheet: it keeps to the part.
    const Sheet small([&](HDC dc) {
        SetMapMode(dc, MM_ANISOTROPIC);
        SetViewportExtEx(dc, Sheet::Width / 2, Sheet::Height / 2, nullptr);
        PlayMetaFile(dc, picture->hMF);
    });
    EXPECT_EQ(0xFFFFFFu, small.At(Sheet::Width / 2 + 10, Sheet::Height / 2 - 10));
    EXPECT_EQ(0xFFFFFFu, small.At(Sheet::Width / 2 - 10, Sheet::Height / 2 + 10));
    EXPECT_NE(0xFFFFFFu, small.At(Sheet::Width / 2 - 10, Sheet::Height / 2 - 10));
    GlobalUnlock(second.hMetaFilePict);
    EXPECT_GE(old.Colors(), FewestColors());
    EXPECT_LT(old.DifferenceTo(direct), 0.2);
}

TEST_P(Pictures, TheDataObjectSaysWhatItHasAndRefusesTheRest) {
    PlacePicture(false);
    const auto data = As<IDataObject>();
    struct Case {
        FORMATETC format;
        HRESULT expected;
    };
    const Case cases[] = {
        {Format(CF_ENHMETAFILE, TYMED_ENHMF), S_OK},
        {Format(CF_METAFILEPICT, TYMED_MFPICT), S_OK},
        {{CF_ENHMETAFILE, nullptr, DVASPECT_DOCPRINT, -1, TYMED_ENHMF}, S_OK},
        {Format(CF_METAFILEPICT, TYMED_ENHMF), DV_E_TYMED},
        {Format(CF_BITMAP, TYMED_GDI), DV_E_FORMATETC},
        {Format(CF_UNICODETEXT, TYMED_HGLOBAL), DV_E_FORMATETC},
        {{CF_ENHMETAFILE, nullptr, DVASPECT_ICON, -1, TYMED_ENHMF}, DV_E_DVASPECT},
        {{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, 3, TYMED_ENHMF}, DV_E_LINDEX},
    };
    for (Case c : cases) {
        SCOPED_TRACE(testing::Message() << c.format.cfFormat << " " << c.format.tymed);
        EXPECT_EQ(c.expected, data->QueryGetData(&c.format));
        ReleasedMedium medium;
        medium.tymed = 0xFF;
        EXPECT_EQ(c.expected, data->GetData(&c.format, &medium));
        if (c.expected != S_OK) {
            EXPECT_EQ(static_cast<DWORD>(TYMED_NULL), medium.tymed);
        }
    }
    ComPtr<IEnumFORMATETC> list;
    ASSERT_EQ(S_OK, data->EnumFormatEtc(DATADIR_GET, list.Put()));
    FORMATETC found[3] = {};
    ULONG count = 0;
    EXPECT_EQ(S_FALSE, list->Next(3, found, &count));
    ASSERT_EQ(2u, count);
    for (ULONG i = 0; i < count; ++i) EXPECT_EQ(S_OK, data->QueryGetData(&found[i]));
    FORMATETC canonical{};
    EXPECT_EQ(DATA_S_SAMEFORMATETC, data->GetCanonicalFormatEtc(&found[0], &canonical));
    EXPECT_EQ(found[0].cfFormat, canonical.cfFormat);
    ReleasedMedium medium;
    EXPECT_TRUE(FAILED(data->SetData(&found[0], &medium, FALSE)));
}

TEST_P(Pictures, SinksOfDataAndViewHearOfEachChangeUntilTheyLeave) {
    Place(false);
    const auto sink = comkit::MakeObject<DataSink>();
    const auto data = As<IDataObject>();
    FORMATETC format = Format(CF_ENHMETAFILE, TYMED_ENHMF);
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, data->DAdvise(&format, 0, sink.Get(), &cookie));
    EXPECT_NE(0u, cookie);
    ASSERT_EQ(S_OK, As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, 0, sink.Get()));
    ComPtr<IAdviseSink> back;
    EXPECT_EQ(S_OK, As<IViewObject>()->GetAdvise(nullptr, nullptr, back.Put()));
    EXPECT_EQ(static_cast<IAdviseSink*>(sink.Get()), back.Get());
    EXPECT_EQ(0, sink->viewChanges);
    EXPECT_EQ(S_OK, As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, sink.Get()));
    EXPECT_EQ(1, sink->viewChanges);
    sink->viewChanges = 0;
    Put(L"Caption", u"new");
    // The show control's labels take other sizes as well, and each change is told.
    EXPECT_GE(sink->dataChanges, 1);
    EXPECT_TRUE(sink->mediumWasFilled);
    EXPECT_GE(sink->viewChanges, 1);
    const int dataChanges = sink->dataChanges;
    const int viewChanges = sink->viewChanges;
    Put(L"Caption", u"new");
    EXPECT_EQ(dataChanges, sink->dataChanges);
    ComPtr<IEnumSTATDATA> list;
    EXPECT_EQ(S_OK, data->EnumDAdvise(list.Put()));
    EXPECT_EQ(S_OK, data->DUnadvise(cookie));
    EXPECT_EQ(OLE_E_NOCONNECTION, data->DUnadvise(cookie));
    EXPECT_EQ(S_OK, As<IViewObject>()->SetAdvise(0, 0, nullptr));
    Put(L"Caption", u"newer");
    EXPECT_EQ(dataChanges, sink->dataChanges);
    EXPECT_EQ(viewChanges, sink->viewChanges);
    FORMATETC wrong = Format(CF_BITMAP, TYMED_GDI);
    EXPECT_TRUE(FAILED(data->DAdvise(&wrong, 0, sink.Get(), &cookie)));
}

TEST_P(Pictures, ClosingTellsTheSinksOfTheObject) {
    Place(false);
    const auto sink = comkit::MakeObject<DataSink>();
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, As<IOleObject>()->Advise(sink.Get(), &cookie));
    ASSERT_EQ(S_OK, As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, sink.Get()));
    Put(L"Caption", u"a");
    Put(L"Caption", u"b");
    EXPECT_EQ(1, sink->viewChanges);
    EXPECT_EQ(S_OK, As<IOleObject>()->Close(OLECLOSE_NOSAVE));
    EXPECT_EQ(1, sink->closes);
    EXPECT_EQ(S_OK, As<IOleObject>()->Unadvise(cookie));
    EXPECT_EQ(OLE_E_NOCONNECTION, As<IOleObject>()->Unadvise(cookie));
}

INSTANTIATE_TEST_SUITE_P(OfEitherControl, Pictures, EitherControl(), NameOfControl);

}  // namespace
}  // namespace component
