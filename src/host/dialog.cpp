// SPDX-License-Identifier: MIT
#include "host/dialog.h"

#include "host/tables.h"

GeDialog::GeDialog() {
    HostTables()->dialog->Attach(this);
}

GeDialog::~GeDialog() {
    HostTables()->dialog->Detach(this);
}

bool GeDialog::OpenModal(int32_t width, int32_t height) {
    return HostTables()->dialog->OpenModal(this, width, height);
}

bool GeDialog::OpenAsync(int32_t pluginId, int32_t width, int32_t height) {
    return HostTables()->dialog->OpenAsync(this, pluginId, width, height);
}

void GeDialog::Close() {
    HostTables()->dialog->Close(this);
}

bool GeDialog::IsOpen() const {
    return HostTables()->dialog->IsOpen(this);
}

void GeDialog::SetTitle(const String& title) {
    HostTables()->dialog->SetTitle(this, title);
}

void GeDialog::SetTimer(int32_t milliseconds) {
    HostTables()->dialog->SetTimer(this, milliseconds);
}

bool GeDialog::AddStaticText(int32_t id, int32_t width, int32_t height, const String& text) {
    return HostTables()->dialog->AddGadget(this, GADGET_STATICTEXT, id, width, height, text);
}

bool GeDialog::AddButton(int32_t id, int32_t width, int32_t height, const String& text) {
    return HostTables()->dialog->AddGadget(this, GADGET_BUTTON, id, width, height, text);
}

bool GeDialog::AddCheckbox(int32_t id, int32_t width, int32_t height, const String& text) {
    return HostTables()->dialog->AddGadget(this, GADGET_CHECKBOX, id, width, height, text);
}

bool GeDialog::AddEditText(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_EDITTEXT, id, width, height, String());
}

bool GeDialog::AddEditNumber(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_EDITNUMBER, id, width, height, String());
}

bool GeDialog::AddComboBox(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_COMBOBOX, id, width, height, String());
}

bool GeDialog::AddChild(int32_t comboId, int32_t value, const String& text) {
    return HostTables()->dialog->AddChild(this, comboId, value, text);
}

bool GeDialog::GroupBegin(int32_t id, const String& title) {
    return HostTables()->dialog->AddGadget(this, GADGET_GROUP_BEGIN, id, 0, 0, title);
}

bool GeDialog::GroupEnd() {
    return HostTables()->dialog->AddGadget(this, GADGET_GROUP_END, 0, 0, 0, String());
}

bool GeDialog::SetValue(int32_t id, const GeData& value) {
    return HostTables()->dialog->SetValue(this, id, value);
}

bool GeDialog::GetValue(int32_t id, GeData& value) const {
    return HostTables()->dialog->GetValue(this, id, value);
}

void GeDialog::Enable(int32_t id, bool enabled) {
    HostTables()->dialog->Enable(this, id, enabled);
}

void MessageDialog(const String& text) {
    HostTables()->dialog->MessageDialog(text);
}

bool QuestionDialog(const String& text) {
    return HostTables()->dialog->QuestionDialog(text);
}
