// The entry of the package in the registry, by which the logon process finds its functions. Any
// thread.
#pragma once

#include <string>

namespace quillgate::notifier {

// `folder` is that of the package's file, with the separator at its end. Both return whether the
// registry could be changed; there need not be an entry to remove.
bool RegisterPackage(const std::wstring& folder);
bool UnregisterPackage();

}  // namespace quillgate::notifier
