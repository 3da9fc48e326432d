// The scene of the feature tests: an open sheet's context over a scripted core driver, with windows on
// demand.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "src/bindings/current_values.h"
#include "src/bindings/popups.h"
#include "src/features/popup_filling.h"
#include "src/records/sheet_context.h"
#include "tests/support/fake_core.h"
#include "tests/support/testing.h"

namespace tintwerk {

using Strings = std::vector<std::string>;
using WideString = std::basic_string<WCHAR>;

inline std::string Narrow(const WideString& text)
{
    return {text.begin(), text.end()};
}

class FeatureTest : public testing::Test
{
protected:
    FeatureTest()
    {
        context.options = table.get();
        context.core = {FakeCore::Object(), &core, nullptr, heap};
        MakeFresh(Current());
    }
    ~FeatureTest() override
    {
        if (page) DestroyWindow(page);
        HeapDestroy(heap);
    }

    // The first of these lines that the trace lacks since the last call.
    std::string Missing(const Strings& expected) { return MissingLine(trace.Take(), expected); }

    // An option list as the initial read leaves it.
    void Fill(int row, const std::string& keywords, int selection)
    {
        static std::vector<std::unique_ptr<Strings>> kept;
        kept.push_back(std::make_unique<Strings>(Words(keywords)));
        OptionList& list = table->lists[static_cast<size_t>(row)] = {};
        for (size_t i = 0; i < kept.back()->size(); ++i)
            list[i].keyword = (*kept.back())[i].c_str();
        context.popups.selections[row] = selection;
    }

    HWND Child(const WCHAR* kind, DWORD style, int id)
    {
        if (!page)
            page = CreateWindowExW(0, TEXT("STATIC"), TEXT(""), WS_OVERLAPPED, 0, 0, 400, 400, nullptr,
                                   nullptr, GetModuleHandleW(nullptr), nullptr);
        const HWND window = CreateWindowExW(0, kind, TEXT(""), WS_CHILD | WS_VISIBLE | style, 0, 0, 100, 100,
                                            page, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)),
                                            GetModuleHandleW(nullptr), nullptr);
        EXPECT_NE(nullptr, window);
        return window;
    }
    HWND Combo(int row)
    {
        return context.popups.windows[row] =
                   Child(TEXT("COMBOBOX"), CBS_DROPDOWNLIST, kPopupTable[static_cast<size_t>(row)].controlId);
    }
    // A popup with its options as it stands on its page.
    HWND Popup(int row, const std::string& keywords, int selection)
    {
        if (row != kPopupHalftone) Fill(row, keywords, selection); // whose options never change
        context.popups.selections[row] = selection;
        const HWND combo = context.popups.windows[row] ? context.popups.windows[row] : Combo(row);
        FillPopUp(combo, PopupList(context, row), PopupVisibility(context, row), selection);
        if (selection == 0) Select(row, -1);
        trace.Take();
        return combo;
    }
    void Select(int row, int item)
    {
        SendMessageW(context.popups.windows[row], CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    }
    // "text=data" of every item, the current one with a star.
    static Strings Items(HWND combo)
    {
        Strings items;
        for (LRESULT i = 0; i < SendMessageW(combo, CB_GETCOUNT, 0, 0); ++i) {
            WCHAR text[300] = {};
            const auto item = static_cast<WPARAM>(i);
            SendMessageW(combo, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text));
            items.push_back(Narrow(text) + "=" +
                            std::to_string(SendMessageW(combo, CB_GETITEMDATA, item, 0)));
            if (SendMessageW(combo, CB_GETCURSEL, 0, 0) == i) items.back() += "*";
        }
        return items;
    }

    FakeCore core;
    const HANDLE heap = HeapCreate(0, 0, 0);
    const std::unique_ptr<OptionTable> table = std::make_unique<OptionTable>();
    SheetContext context{};
    HWND page = nullptr;
    DebugLines trace;
};

} // namespace tintwerk
