#include "shell_link.h"

#include "frame/unique_com.h"

#include <gtest/gtest.h>
#include <shlobj.h>

#include <functional>

using programs::Bytes;
using vl::UniqueInterface;

namespace suite {
namespace {

void with_link(const std::function<void(IShellLinkW*, IPersistFile*)>& action) {
    const vl::ComApartment apartment;
    void* made = nullptr;
    ASSERT_EQ(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &made), S_OK);
    const UniqueInterface<IShellLinkW> link(static_cast<IShellLinkW*>(made));
    void* found = nullptr;
    ASSERT_EQ(link.get()->QueryInterface(IID_IPersistFile, &found), S_OK);
    const UniqueInterface<IPersistFile> file(static_cast<IPersistFile*>(found));
    action(link.get(), file.get());
}

}  // namespace

void warm_up_links() { (void)list_of_link(L"none.lnk"); }

void make_link(const std::wstring& path, const Bytes& list) {
    with_link([&](IShellLinkW* link, IPersistFile* file) {
        EXPECT_GE(link->SetIDList(reinterpret_cast<LPCITEMIDLIST>(list.data())), 0);
        EXPECT_EQ(file->Save(path.c_str(), TRUE), S_OK);
    });
}

Bytes list_of_link(const std::wstring& path) {
    Bytes bytes;
    with_link([&](IShellLinkW* link, IPersistFile* file) {
        LPITEMIDLIST list = nullptr;
        if (FAILED(file->Load(path.c_str(), STGM_READ)) || link->GetIDList(&list) != S_OK) return;
        const auto* const first = reinterpret_cast<const uint8_t*>(list);
        bytes.assign(first, first + ILGetSize(list));
        CoTaskMemFree(list);
    });
    return bytes;
}

}  // namespace suite
