#include "watched_link.h"

#include <shlguid.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace sendto_test {
namespace {

std::string file_of(LPCOLESTR path) {
    const std::wstring name = std::wstring(path).substr(std::wstring(path).find_last_of(L'\\') + 1);
    char text[1024] = "";
    WideCharToMultiByte(CP_UTF8, 0, name.c_str(), -1, text, sizeof text, nullptr, nullptr);
    return text;
}

}  // namespace

class WatchedLink final : public IShellLinkA, public IPersistFile {
public:
    WatchedLink(LinkWatch& watch, IShellLinkA* link) : watch_(watch), link_(link) { ++watch_.live_; }
    ~WatchedLink() {
        if (file_ != nullptr) file_->Release();
        link_->Release();
        --watch_.live_;
    }
    WatchedLink(const WatchedLink&) = delete;
    WatchedLink& operator=(const WatchedLink&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const HRESULT failure = watch_.note("QueryInterface", id == IID_IPersistFile ? "file" : "other");
        if (FAILED(failure)) return failure;
        void* found = nullptr;
        const HRESULT result = file_ != nullptr ? S_OK : link_->QueryInterface(id, &found);
        if (FAILED(result)) return result;
        if (found != nullptr) file_ = static_cast<IPersistFile*>(found);
        ++references_;
        *object = static_cast<IPersistFile*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
    ULONG STDMETHODCALLTYPE Release() override {
        const int left = --references_;
        EXPECT_GE(left, 0);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

    HRESULT STDMETHODCALLTYPE Load(LPCOLESTR path, DWORD mode) override {
        return after("Load", file_of(path) + ", " + std::to_string(mode),
                     [&] { return file_->Load(path, mode); });
    }
    HRESULT STDMETHODCALLTYPE Save(LPCOLESTR path, BOOL remember) override {
        return after("Save", file_of(path) + ", " + std::to_string(remember),
                     [&] { return file_->Save(path, remember); });
    }
    HRESULT STDMETHODCALLTYPE GetArguments(LPSTR text, int size) override {
        return after("GetArguments", std::to_string(size), [&] { return link_->GetArguments(text, size); });
    }
    HRESULT STDMETHODCALLTYPE GetPath(LPSTR path, int size, WIN32_FIND_DATAA* data, DWORD flags) override {
        EXPECT_EQ(data, nullptr);
        return after("GetPath", std::to_string(size) + ", " + std::to_string(flags),
                     [&] { return link_->GetPath(path, size, data, flags); });
    }
    HRESULT STDMETHODCALLTYPE GetIDList(LPITEMIDLIST* list) override {
        return after("GetIDList", "", [&] { return link_->GetIDList(list); });
    }
    HRESULT STDMETHODCALLTYPE SetIDList(LPCITEMIDLIST list) override {
        return after("SetIDList", "", [&] { return link_->SetIDList(list); });
    }
    HRESULT STDMETHODCALLTYPE SetPath(LPCSTR path) override {
        return after("SetPath", path, [&] { return link_->SetPath(path); });
    }
    HRESULT STDMETHODCALLTYPE SetDescription(LPCSTR text) override {
        return after("SetDescription", text, [&] { return link_->SetDescription(text); });
    }
    HRESULT STDMETHODCALLTYPE SetArguments(LPCSTR text) override {
        return after("SetArguments", text, [&] { return link_->SetArguments(text); });
    }
    HRESULT STDMETHODCALLTYPE SetIconLocation(LPCSTR path, int index) override {
        return after("SetIconLocation", path + (", " + std::to_string(index)),
                     [&] { return link_->SetIconLocation(path, index); });
    }

    // What the library has no business with.
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID*) override { return unexpected("GetClassID"); }
    HRESULT STDMETHODCALLTYPE IsDirty() override { return unexpected("IsDirty"); }
    HRESULT STDMETHODCALLTYPE SaveCompleted(LPCOLESTR) override { return unexpected("SaveCompleted"); }
    HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR*) override { return unexpected("GetCurFile"); }
    HRESULT STDMETHODCALLTYPE GetDescription(LPSTR, int) override { return unexpected("GetDescription"); }
    HRESULT STDMETHODCALLTYPE GetWorkingDirectory(LPSTR, int) override {
        return unexpected("GetWorkingDirectory");
    }
    HRESULT STDMETHODCALLTYPE SetWorkingDirectory(LPCSTR) override {
        return unexpected("SetWorkingDirectory");
    }
    HRESULT STDMETHODCALLTYPE GetHotkey(WORD*) override { return unexpected("GetHotkey"); }
    HRESULT STDMETHODCALLTYPE SetHotkey(WORD) override { return unexpected("SetHotkey"); }
    HRESULT STDMETHODCALLTYPE GetShowCmd(int*) override { return unexpected("GetShowCmd"); }
    HRESULT STDMETHODCALLTYPE SetShowCmd(int) override { return unexpected("SetShowCmd"); }
    HRESULT STDMETHODCALLTYPE GetIconLocation(LPSTR, int, int*) override {
        return unexpected("GetIconLocation");
    }
    HRESULT STDMETHODCALLTYPE SetRelativePath(LPCSTR, DWORD) override {
        return unexpected("SetRelativePath");
    }
    HRESULT STDMETHODCALLTYPE Resolve(HWND, DWORD) override { return unexpected("Resolve"); }

private:
    template <typename Call>
    HRESULT after(const char* method, const std::string& rest, Call call) {
        const HRESULT failure = watch_.note(method, rest);
        return FAILED(failure) ? failure : call();
    }
    static HRESULT unexpected(const char* method) {
        ADD_FAILURE() << method;
        return E_NOTIMPL;
    }

    LinkWatch& watch_;
    IShellLinkA* link_;
    IPersistFile* file_ = nullptr;
    int references_ = 1;
};

LinkWatch::LinkWatch() {
    create_.answer([this](REFCLSID id, LPUNKNOWN outer, DWORD context, REFIID interface_id, LPVOID* object) {
        EXPECT_TRUE(id == CLSID_ShellLink && interface_id == IID_IShellLinkA);
        EXPECT_EQ(outer, nullptr);
        EXPECT_EQ(context, DWORD{CLSCTX_INPROC_SERVER});
        const HRESULT failure = note("create");
        if (FAILED(failure)) return failure;
        const HRESULT result = create_.real(id, outer, context, interface_id, object);
        if (SUCCEEDED(result)) {
            *object = static_cast<IShellLinkA*>(new WatchedLink(*this, static_cast<IShellLinkA*>(*object)));
        }
        return result;
    });
}

LinkWatch::~LinkWatch() { EXPECT_EQ(live_, 0) << "link objects that nobody released"; }

size_t LinkWatch::count(const std::string& method) const {
    return static_cast<size_t>(std::count_if(calls_.begin(), calls_.end(), [&](const std::string& call) {
        return call == method || call.rfind(method + " ", 0) == 0;
    }));
}

void LinkWatch::fail(const std::string& method, size_t nth, HRESULT result) {
    failing_ = method;
    nth_ = nth;
    seen_ = 0;
    failure_ = result;
}

HRESULT LinkWatch::note(const std::string& method, const std::string& rest) {
    calls_.push_back(rest.empty() ? method : method + " " + rest);
    if (method != failing_) return S_OK;
    ++seen_;
    return nth_ == 0 || seen_ == nth_ ? failure_ : S_OK;
}

}  // namespace sendto_test
