#pragma once
// The choice beside "تاييد و چاپ": the built-in "جديد" layout (checked by default) or "قديم".
namespace tr::cashbank {

enum class PrintLayout { New, Old };

}  // namespace tr::cashbank
