#include "platform/ui/ServerModule.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

QString functionText(const Dl_info &info, const void *address)
{
    if (!info.dli_sname)
        return QStringLiteral("?");
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(info.dli_sname, nullptr, nullptr, &status), &std::free);
    const auto offset = static_cast<const char *>(address) - static_cast<const char *>(info.dli_saddr);
    return QString::fromLocal8Bit(name ? name.get() : info.dli_sname) + QLatin1String(" + ") +
           QString::number(offset);
}

// Where no function is known, file and offset are what a symbol table kept elsewhere needs.
QString frameText(const void *address)
{
    Dl_info info = {};
    if (!dladdr(address, &info) || !info.dli_fname)
        return QLatin1String("0x") + QString::number(quintptr(address), 16);
    const auto offset = static_cast<const char *>(address) - static_cast<const char *>(info.dli_fbase);
    return functionText(info, address) + QLatin1String(" (") + QString::fromLocal8Bit(info.dli_fname) +
           QLatin1String(" + 0x") + QString::number(offset, 16) + QLatin1Char(')');
}

} // namespace

QString ServerModule::getBacktrace()
{
    void *addresses[64];
    const int count = backtrace(addresses, 64);
    QString text;
    // The frames before the caller's are this function's, and a sanitizer's own where there is one.
    void **const end = addresses + count;
    // On ARM the lowest bit of a return address says which instructions are there; backtrace() leaves it out.
    const quintptr ours = quintptr(__builtin_return_address(0)) | 1;
    void **const caller =
        std::find_if(addresses, end, [ours](void *address) { return (quintptr(address) | 1) == ours; });
    void **const first = caller == end ? addresses : caller;
    for (void **frame = first; frame < end; ++frame)
        text += QLatin1Char('#') + QString::number(frame - first) + QLatin1Char(' ') + frameText(*frame) +
                QLatin1Char('\n');
    return text;
}
