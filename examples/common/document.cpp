#include "common/document.h"

#include "common/markup.h"
#include "sectrix/interfaces/dom_reader_json.h"

#include <stdexcept>
#include <string>

namespace example {

qel::Dom ReadDocument(std::filesystem::path const& path) {
    std::string const text = ReadFile(path);
    if (text.find('\0') != std::string::npos) // where the reader would end
        throw std::runtime_error(path.string() + ": is not JSON: has a zero byte");
    qel::Dom dom;
    std::string error;
    if (!qel::DomReaderJson::FromString(dom, text.c_str(), &error))
        throw std::runtime_error(path.string() + ": is not JSON: " + error);
    return dom;
}

} // namespace example
