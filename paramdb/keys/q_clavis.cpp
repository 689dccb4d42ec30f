#include <paramdb/keys/q_clavis.h>

std::wostream& operator<<(std::wostream& stream, QClavis const& clavis) {
    for (std::size_t element = 0; element < QClavis::size(); ++element) {
        if (element > 0)
            stream << L' ';
        stream << clavis[element];
    }
    return stream;
}
