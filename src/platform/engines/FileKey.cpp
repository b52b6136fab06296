#include "platform/engines/FileKey.h"

#include <QString>

#include <sqlite3.h>

#include <array>
#include <vector>

namespace
{
constexpr int pagesAsked = 8; ///< each has a seal of its own; one that fits proves the key

int PageSize(sqlite3_file *file)
{
    std::array<unsigned char, 100> header{};
    file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0);
    const int size = header[16] << 8 | header[17];
    return size == 1 ? 65'536 : size;
}
} // namespace

bool GiveKey(sqlite3 *handle, const QString &password)
{
    const QByteArray key = password.toUtf8();
    return sqlite3_key(handle, key.constData(), static_cast<int>(key.size())) == SQLITE_OK;
}

KeyFit TryKey(sqlite3 *handle, const QString &password)
{
    sqlite3_file *file = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    const int pageSize =
        PageSize(file); // readable despite the encryption, but not through a handle with a key
    constexpr int least = 512;
    if (pageSize < least || (pageSize & (pageSize - 1)) != 0 || !GiveKey(handle, password))
        return KeyFit::Wrong;
    std::vector<unsigned char> page(static_cast<size_t>(pageSize));
    for (int number = 0; number < pagesAsked; ++number) {
        const sqlite3_int64 offset = static_cast<sqlite3_int64>(number) * pageSize;
        const int read = file->pMethods->xRead(file, page.data(), pageSize, offset);
        if (read == SQLITE_OK)
            return number == 0 ? KeyFit::Fits : KeyFit::FitsOnReopening;
        if (read == SQLITE_IOERR_SHORT_READ)
            break;
    }
    return KeyFit::Wrong;
}
