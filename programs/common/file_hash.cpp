#include "file_hash.h"

#include "frame/unique.h"

#include <wincrypt.h>
#include <windows.h>

#include <vector>

namespace programs {
namespace {

struct ProviderTraits : vl::NullIsNone<HCRYPTPROV> {
    static void close(HCRYPTPROV provider) { CryptReleaseContext(provider, 0); }
};
struct HashTraits : vl::NullIsNone<HCRYPTHASH> {
    static void close(HCRYPTHASH hash) { CryptDestroyHash(hash); }
};

class Sha256 {
public:
    Sha256() {
        good_ =
            CryptAcquireContextW(provider_.receive(), nullptr, nullptr, PROV_RSA_AES, CRYPT_VERIFYCONTEXT) &&
            CryptCreateHash(provider_.get(), CALG_SHA_256, 0, 0, hash_.receive());
    }
    void add(const void* bytes, DWORD size) {
        good_ = good_ && CryptHashData(hash_.get(), static_cast<const BYTE*>(bytes), size, 0);
    }
    [[nodiscard]] std::string digits() const {
        BYTE value[32];
        DWORD size = sizeof value;
        if (!good_ || !CryptGetHashParam(hash_.get(), HP_HASHVAL, value, &size, 0)) return {};
        std::string text;
        for (const BYTE byte : value) {
            text += "0123456789abcdef"[byte >> 4];
            text += "0123456789abcdef"[byte & 15];
        }
        return text;
    }

private:
    vl::Unique<ProviderTraits> provider_;
    vl::Unique<HashTraits> hash_;  // goes before its provider
    bool good_ = false;
};

}  // namespace

std::string sha256_of_file(const std::wstring& path) {
    vl::UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) return {};
    Sha256 hash;
    std::vector<char> block(1 << 16);
    DWORD size = 0;
    do {
        if (!ReadFile(file.get(), block.data(), static_cast<DWORD>(block.size()), &size, nullptr)) return {};
        hash.add(block.data(), size);
    } while (size != 0);
    return hash.digits();
}

std::string sha256_of_bytes(const void* bytes, size_t size) {
    Sha256 hash;
    hash.add(bytes, static_cast<DWORD>(size));
    return hash.digits();
}

}  // namespace programs
