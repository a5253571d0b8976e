#include "host/store/refusal.h"

namespace tolvex::store {

void refuseView() { throw Refusal(kNoSaveRight, "Nėra teisės peržiūrėti!"); }
void refuseSave() { throw Refusal(kNoSaveRight, "Nėra teisės įrašyti!"); }
void refuseErase() { throw Refusal(kEditedGone, "Nėra teisės panaikinti!"); }
void refuseGone() { throw Refusal(kObjectGone, "Objektas panaikintas!"); }
void refuseEditedGone() { throw Refusal(kEditedGone, "Redaguojamas įrašas nebeegzistuoja!"); }
void refuseDouble() { throw Refusal(kDuplicate, "Toks įrašas jau egzistuoja!"); }
void refuseRule(const std::string& text) { throw Refusal(kRuleBroken, text); }

}  // namespace tolvex::store
