#include "management/edit_contact.h"

#include "base/text.h"
#include "core/picture_size.h"

namespace kestro::management {
namespace {

using contacts::Contact;

constexpr int kWidth = 12600;  // twips
constexpr int kHeight = 9600;
constexpr std::string_view kPictureFilter =
    "Bitmap picture (*.bmp)|*.bmp|Gif picture (*.gif)|*.gif|JPEG picture (*.jpg)|*.jpg|"
    "JPEG picture (*.jpeg)|*.jpeg|All files (*.*)|*.*";
constexpr std::array<std::string_view, contacts::kPhoneCount> kCallHandlers = {
    "btnMakeCallPhone1_Click", "btnMakeCallPhone2_Click", "btnMakeCallPhone3_Click",
    "btnMakeCallPhone4_Click"};

}  // namespace

frmEditContact::frmEditContact(forms::FormHost& host, const Needs& needs)
    : Form(host, "frmEditContact", kWidth, kHeight),
      procedure_(needs.log, "KESTROCTI.frmEditContact", core::Spelling::kFullStop),
      closing_(needs.log),
      needs_(needs) {
  LayOut();
  Connect();
}

void frmEditContact::Connect() {
  for (std::size_t i = 0; i < calls_.size(); ++i) {
    calls_[i]->on_click = [this, i] { MakeCall(static_cast<int>(i)); };
  }
  for (std::size_t i = 0; i < phone_types_.size(); ++i) {
    phone_types_[i]->on_click = [this, i] { NamePhone(static_cast<int>(i)); };
  }
  cmdOK.on_click = [this] { cmdOK_Click(); };
  cmdCancel.on_click = [this] { cmdCancel_Click(); };
  cmdChangePicture.on_click = [this] { cmdChangePicture_Click(); };
  btnDeletePicture.on_click = [this] { btnDeletePicture_Click(); };
}

void frmEditContact::Form_Load() {
  procedure_.Outermost("Form_Load", [&] { GetFormTextTranslation(); });
}

void frmEditContact::EditNew(forms::Form& owner) {
  if (!MayShowAnother()) return;
  BeforeShowControl(Mode::kNew, {}, "");
  ShowModal(&owner);
}

void frmEditContact::Edit(const Contact& contact, forms::Form& owner) {
  if (!MayShowAnother()) return;
  BeforeShowControl(Mode::kEdit, contact, "");
  ShowModal(&owner);
}

void frmEditContact::EditBesideOthers(const Contact& contact) {
  if (!MayShowAnother()) return;
  BeforeShowControl(Mode::kEdit, contact, "");
  ShowBesideOthers();
}

void frmEditContact::EditNewBesideOthers(std::string_view phone) {
  if (!MayShowAnother()) return;
  BeforeShowControl(Mode::kNew, {}, phone);
  ShowBesideOthers();
}

void frmEditContact::EditNewFromCall(const std::optional<std::string>& phone) {
  if (!MayShowAnother()) return;
  BeforeShowControl(Mode::kNewFromCall, {}, phone.value_or(""));
  ShowBesideOthers();
}

void frmEditContact::ShowBesideOthers() {
  if (!visible()) return Show();
  SetWindowState(forms::WindowState::kNormal);
  needs_.foreground.ForceForegroundWindow(handle());
}

bool frmEditContact::MayShowAnother() {
  if (!visible() || Entries() == entries_shown_) return true;
  if (needs_.messages.Show(ports::kYesNo | ports::kQuestion, "310") == ports::BoxAnswer::kYes) return true;
  ShowBesideOthers();
  return false;
}

void frmEditContact::BeforeShowControl(Mode mode, const Contact& contact, std::string_view phone) {
  procedure_("BeforeShowControl", [&] {
    Load();
    mode_ = mode;
    contact_ = contact;
    SetFieldMaxLengths();
    FillUserFieldsNames();
    FillTelephoneLists();
    FillLists();
    if (mode == Mode::kEdit) {
      LoadFieldsForContact(contact);
    } else {
      ClearFields();
      txtPhone1.SetText(phone);
    }
    txtName.SetFocus();
    entries_shown_ = Entries();
  });
}

void frmEditContact::MakeCall(int phone) {
  const auto index = static_cast<std::size_t>(phone);
  procedure_.Outermost(
      kCallHandlers.at(index),
      [&] {
        const std::string& number = phones_[index]->text();
        if (!number.empty()) needs_.dialling.Dial(number);
      },
      [&](const base::RuntimeError&) { needs_.messages.Notice("285"); });
}

std::string frmEditContact::GetPictureFilePath() {
  return procedure_("GetPictureFilePath", [&] {
    ports::FileDialogRequest request;
    request.title = needs_.texts.GetLocalizedString("160");
    request.filter = kPictureFilter;
    request.default_extension = "gif";
    return needs_.file_dialogs.OpenFile(request).value_or("");
  });
}

void frmEditContact::cmdChangePicture_Click() {
  procedure_.Outermost("cmdChangePicture_Click", [&] {
    const std::string file = GetPictureFilePath();
    if (file.empty() || !needs_.files.FileExists(file)) return;
    if (!core::IsShowablePicture(needs_.files.ReadStart(file, core::kPictureStartBytes))) {
      return needs_.messages.Notice("309");
    }
    picture_path_ = file;
    picture_chosen_ = true;
    ContactPicture.SetFile(file);
  });
}

void frmEditContact::btnDeletePicture_Click() {
  procedure_.Outermost("btnDeletePicture_Click", [&] {
    picture_path_.clear();
    picture_chosen_ = false;
    ContactPicture.SetFile("");
  });
}

void frmEditContact::cmdOK_Click() {
  procedure_.Outermost(
      "cmdOK_Click",
      [&] {
        if (base::Trim(txtName.text()).empty() && base::Trim(txtCompany.text()).empty()) {
          needs_.messages.Notice("133");
          return txtName.SetFocus();
        }
        if (mode_ == Mode::kEdit) {
          UpdateContact();
        } else {
          CreateContact();
        }
        if (on_stored) on_stored();
        RequestUnload(forms::kFromCode);
      },
      [&](const base::RuntimeError&) { needs_.messages.Notice("134"); });
}

void frmEditContact::cmdCancel_Click() {
  procedure_.Outermost("cmdCancel_Click", [&] { RequestUnload(forms::kFromCode); });
}

}  // namespace kestro::management
