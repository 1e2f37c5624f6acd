// A link object of the shell that keeps what is asked of it and fails where it is told to.
#pragma once

#include <shlobj.h>

#include <string>
#include <vector>

namespace shortcuts_test {

class FakeLink final : public IShellLinkA, public IPersistFile {
public:
    std::vector<std::string> calls;
    std::wstring loaded;
    std::string arguments;
    HRESULT query_result = S_OK, load_result = S_OK, arguments_result = S_OK;
    int references = 1;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        note(id == IID_IPersistFile ? "ask for the file" : "ask for something else");
        if (FAILED(query_result)) return query_result;
        ++references;
        *object = static_cast<IPersistFile*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override {
        note("release");
        return static_cast<ULONG>(--references);
    }

    HRESULT STDMETHODCALLTYPE Load(LPCOLESTR path, DWORD mode) override {
        note("load, mode " + std::to_string(mode));
        loaded = path;
        return load_result;
    }
    HRESULT STDMETHODCALLTYPE GetArguments(LPSTR text, int size) override {
        note("arguments, " + std::to_string(size));
        for (int i = 0; i < size; ++i) zeroed &= text[i] == 0;
        if (FAILED(arguments_result)) return arguments_result;
        lstrcpynA(text, arguments.c_str(), size);
        return S_OK;
    }
    bool zeroed = true;  // was the buffer, when the arguments were asked for?

    LPITEMIDLIST item_list = nullptr;  // given away
    HRESULT item_list_result = E_NOTIMPL;
    HRESULT STDMETHODCALLTYPE GetIDList(LPITEMIDLIST* list) override {
        note("item list");
        *list = item_list;
        return item_list_result;
    }

    // What the library has no business with.
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID*) override { return note("GetClassID"); }
    HRESULT STDMETHODCALLTYPE IsDirty() override { return note("IsDirty"); }
    HRESULT STDMETHODCALLTYPE Save(LPCOLESTR, BOOL) override { return note("Save"); }
    HRESULT STDMETHODCALLTYPE SaveCompleted(LPCOLESTR) override { return note("SaveCompleted"); }
    HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR*) override { return note("GetCurFile"); }
    HRESULT STDMETHODCALLTYPE GetPath(LPSTR, int, WIN32_FIND_DATAA*, DWORD) override {
        return note("GetPath");
    }
    HRESULT STDMETHODCALLTYPE SetIDList(LPCITEMIDLIST) override { return note("SetIDList"); }
    HRESULT STDMETHODCALLTYPE GetDescription(LPSTR, int) override { return note("GetDescription"); }
    HRESULT STDMETHODCALLTYPE SetDescription(LPCSTR) override { return note("SetDescription"); }
    HRESULT STDMETHODCALLTYPE GetWorkingDirectory(LPSTR, int) override { return note("GetWorkingDirectory"); }
    HRESULT STDMETHODCALLTYPE SetWorkingDirectory(LPCSTR) override { return note("SetWorkingDirectory"); }
    HRESULT STDMETHODCALLTYPE SetArguments(LPCSTR) override { return note("SetArguments"); }
    HRESULT STDMETHODCALLTYPE GetHotkey(WORD*) override { return note("GetHotkey"); }
    HRESULT STDMETHODCALLTYPE SetHotkey(WORD) override { return note("SetHotkey"); }
    HRESULT STDMETHODCALLTYPE GetShowCmd(int*) override { return note("GetShowCmd"); }
    HRESULT STDMETHODCALLTYPE SetShowCmd(int) override { return note("SetShowCmd"); }
    HRESULT STDMETHODCALLTYPE GetIconLocation(LPSTR, int, int*) override { return note("GetIconLocation"); }
    HRESULT STDMETHODCALLTYPE SetIconLocation(LPCSTR, int) override { return note("SetIconLocation"); }
    HRESULT STDMETHODCALLTYPE SetRelativePath(LPCSTR, DWORD) override { return note("SetRelativePath"); }
    HRESULT STDMETHODCALLTYPE Resolve(HWND, DWORD) override { return note("Resolve"); }
    HRESULT STDMETHODCALLTYPE SetPath(LPCSTR) override { return note("SetPath"); }

private:
    HRESULT note(std::string call) {
        calls.push_back(std::move(call));
        return E_NOTIMPL;
    }
};

}  // namespace shortcuts_test
