// Whether the calling user is an administrator.
#include "frame/frame.h"
#include "frame/unique_sid.h"
#include "vlcm/printers.h"

namespace vl::printers {
namespace {

UniqueSid administrators() {
    SID_IDENTIFIER_AUTHORITY authority = {SECURITY_NT_AUTHORITY};
    UniqueSid group;
    if (!AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0,
                                  0, 0, 0, 0, group.receive())) {
        (void)group.release();
    }
    return group;
}

BOOL ask_administrator(BOOL* answer) {
    const UniqueSid group = administrators();
    if (!group) {
        trace_line("can not initialize SID\r\n");
        return FALSE;
    }
    BOOL member = FALSE;
    if (!CheckTokenMembership(nullptr, group.get(), &member)) {
        trace_line("can not check token membership\r\n");
        return FALSE;
    }
    trace_line("check token correctly\r\n");
    *answer = member;
    return TRUE;
}

}  // namespace
}  // namespace vl::printers

using namespace vl;

extern "C" BOOL VlCm_IsCurrentUserAdmin(BOOL* isAdmin) {
    if (isAdmin != nullptr) return printers::ask_administrator(isAdmin);
    trace_line("parameter error!\r\n");
    return FALSE;
}
