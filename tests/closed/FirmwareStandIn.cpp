// A stand-in for the system library, for systems that do not export the function. It reports UEFI; with
// STANDIN_FAILS the function fails. windows.h is not included because it declares the function as imported.
extern "C" __declspec(dllexport) int __stdcall GetFirmwareType(unsigned* type)
{
    *type = 2;
#ifdef STANDIN_FAILS
    return 0;
#else
    return 1;
#endif
}
