// A system library that reports UEFI, for a system that does not export the call. With STANDIN_FAILS the call
// fails. Without windows.h, which declares the call as an imported one.
extern "C" __declspec(dllexport) int __stdcall GetFirmwareType(unsigned* type)
{
    *type = 2;
#ifdef STANDIN_FAILS
    return 0;
#else
    return 1;
#endif
}
