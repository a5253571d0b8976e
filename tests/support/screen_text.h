// What a screen shows, compared with the text that is kept for it in tests/screens.
#pragma once

#include <string>

#include "platform/form.h"

namespace tolvex::test {

// With TOLVEX_ACCEPT set the kept text is written anew; look at the difference before committing.
void expectScreen(ui::Form& form, const std::string& name);

}  // namespace tolvex::test
