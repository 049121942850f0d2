// Windows' own headers, for the adapters and the server. Include this instead of <windows.h>: Windows defines
// macros with names that the seam uses, which would give the same class another name in some of the sources.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <objbase.h>
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

#undef CopyFile
#undef FormatMessage
#undef GetObject
#undef MessageBox
