#pragma once
// How an exported screen entry behaves, and the macros that declare one per table row: session
// first, the form created once, per-call extras copied into it, then docked into the parent.
#include <QObject>
#include <QString>
#include <QWidget>
#include <concepts>

#include "entry/session_context.h"

namespace tr::entry {

// A screen is a widget built from the module's Services (kept by reference) and a parent.
template <class Form>
concept Screen = std::derived_from<Form, QWidget> &&
    std::constructible_from<Form, const tr::Services&, QWidget*>;
template <class Form>
concept InvoiceScreen = Screen<Form> && requires(Form& form, const QString& number) {
    form.setInvoiceNumber(number);
};
template <class Form>
concept VoidModeScreen = Screen<Form> && requires(Form& form, bool mode) {
    { form.voidMode() } -> std::convertible_to<bool>;
    form.setVoidMode(mode);
};

// Parent, fill the parent's client area, maximized, shown. A parent without a layout gets a
// stacked one, so the form last opened in a container covers the others as a docked window does.
void embed(QWidget* form, QWidget* parent);
// Parent and show only: the form keeps its designed size and position.
void attach(QWidget* form, QWidget* parent);

QString invoiceText(const char16_t* number);
inline bool voidModeOf(int argument) {
    return static_cast<unsigned char>(argument) != 0;
}

// The published pointer follows the form's life: the host may destroy its container (and with it
// the form) at any time, and the next call must then create a new form.
template <Screen Form, Form*& Pointer>
Form* ensureForm() {
    if (!Pointer) {
        Form* form = new Form(services(), nullptr);
        QObject::connect(form, &QObject::destroyed, [] { Pointer = nullptr; });
        Pointer = form;
    }
    return Pointer;
}

// A form that copies the session rather than keeping a reference to it gets the latest values
// on every call through its setServices().
template <class Form>
void refreshServices(Form* form) {
    if constexpr (requires { form->setServices(services()); }) form->setServices(services());
}

template <class Form, Form*& Pointer>
struct SlotRegistrar {
    explicit SlotRegistrar(FormSlot slot) {
        registerSlot(slot, {[]() -> QWidget* { return Pointer; }, [] { Pointer = nullptr; }});
    }
};

template <Screen Form, Form*& Pointer>
int openScreen(TR_SESSION_PARAMS) {
    storeSession(global, myDate, myDatabase, showStateForm, tempGridForm, dlgMsg);
    Form* form = ensureForm<Form, Pointer>();
    refreshServices(form);
    embed(form, parent);
    return 1;
}

template <InvoiceScreen Form, Form*& Pointer>
int openInvoiceScreen(TR_SESSION_PARAMS, const char16_t* invoiceNumber) {
    storeSession(global, myDate, myDatabase, showStateForm, tempGridForm, dlgMsg);
    Form* form = ensureForm<Form, Pointer>();
    refreshServices(form);
    form->setInvoiceNumber(invoiceText(invoiceNumber));
    embed(form, parent);
    return 1;
}

// The mode is fixed when the form is built (its captions follow it), so a call with the other
// mode rebuilds the form instead of switching it.
template <VoidModeScreen Form, Form*& Pointer>
int openVoidModeScreen(TR_SESSION_PARAMS, int voidMode) {
    storeSession(global, myDate, myDatabase, showStateForm, tempGridForm, dlgMsg);
    const bool mode = voidModeOf(voidMode);
    if (Pointer && bool(Pointer->voidMode()) != mode) {
        Form* stale = Pointer;
        Pointer = nullptr;
        stale->hide();
        delete stale;
    }
    Form* form = ensureForm<Form, Pointer>();
    refreshServices(form);
    attach(form, parent);
    form->setVoidMode(mode);
    form->show();
    return 1;
}

}  // namespace tr::entry

// The form pointer of a slot, published as `_<Slot>` and registered for Release_It.
#define TR_FORM_POINTER(Slot, Form)                                      \
    extern "C" {                                                         \
    TR_ENTRY_EXPORT Form* _##Slot = nullptr;                             \
    }                                                                    \
    static const ::tr::entry::SlotRegistrar<Form, _##Slot> trSlot##Slot{ \
        ::tr::entry::FormSlot::Slot};

// One row of the export table each: the export's name, its form slot and the form class.
#define TR_SCREEN(Export, Slot, Form)                                     \
    TR_FORM_POINTER(Slot, Form)                                           \
    extern "C" TR_ENTRY_EXPORT int TR_STDCALL Export(TR_SESSION_PARAMS) { \
        return ::tr::entry::openScreen<Form, _##Slot>(TR_SESSION_ARGS);   \
    }
#define TR_INVOICE_SCREEN(Export, Slot, Form)                                                 \
    TR_FORM_POINTER(Slot, Form)                                                               \
    extern "C" TR_ENTRY_EXPORT int TR_STDCALL Export(TR_SESSION_PARAMS,                       \
                                                     const char16_t* invoiceNumber) {         \
        return ::tr::entry::openInvoiceScreen<Form, _##Slot>(TR_SESSION_ARGS, invoiceNumber); \
    }
#define TR_VOID_MODE_SCREEN(Export, Slot, Form)                                           \
    TR_FORM_POINTER(Slot, Form)                                                           \
    extern "C" TR_ENTRY_EXPORT int TR_STDCALL Export(TR_SESSION_PARAMS, int voidMode) {   \
        return ::tr::entry::openVoidModeScreen<Form, _##Slot>(TR_SESSION_ARGS, voidMode); \
    }

// A form that another screen creates on demand but Release_It frees (`Pointer` is the owner's
// pointer variable, of type Form*, with external linkage).
#define TR_RELEASED_FORM(Slot, Form, Pointer)                            \
    static const ::tr::entry::SlotRegistrar<Form, Pointer> trSlot##Slot{ \
        ::tr::entry::FormSlot::Slot};
