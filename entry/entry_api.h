#pragma once
// The C interface of libtreasury as a host sees it: export visibility, calling convention and the
// signatures of the three kinds of screen entry point and of Release_It. Every entry returns 1.
class QWidget;

namespace tr {
struct Global;
}
namespace tr::db {
struct MyDatabase;
}
namespace tr::sdk {
class MyDate;
class TShowStateForm;
class TTempGridForm;
class TDlgMsg;
}  // namespace tr::sdk

#if defined(_WIN32)
#define TR_STDCALL __stdcall
#define TR_ENTRY_EXPORT __declspec(dllexport)
#else
#define TR_STDCALL
#define TR_ENTRY_EXPORT __attribute__((visibility("default")))
#endif

// The seven arguments every screen entry takes, in the suite's order.
#define TR_SESSION_PARAMS                                                                         \
    QWidget *parent, tr::Global *global, tr::sdk::MyDate *myDate, tr::db::MyDatabase *myDatabase, \
        tr::sdk::TShowStateForm *showStateForm, tr::sdk::TTempGridForm *tempGridForm,             \
        tr::sdk::TDlgMsg *dlgMsg
#define TR_SESSION_ARGS parent, global, myDate, myDatabase, showStateForm, tempGridForm, dlgMsg

namespace tr::entry {

using ScreenEntry = int(TR_STDCALL*)(TR_SESSION_PARAMS);
// The invoice number is a NUL-terminated UTF-16 text (QString::utf16(), a Windows wide string);
// a null pointer is read as an empty number.
using InvoiceScreenEntry = int(TR_STDCALL*)(TR_SESSION_PARAMS, const char16_t* invoiceNumber);
// Only the low byte of the mode counts: non-zero voids a leaf, zero undoes a voiding.
using VoidModeScreenEntry = int(TR_STDCALL*)(TR_SESSION_PARAMS, int voidMode);
using ReleaseEntry = void(TR_STDCALL*)();

}  // namespace tr::entry
