// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/failures/WriteFailure.h"

#include "base/language/T.h"

#include <cerrno>
#include <system_error>

namespace quelto {

QString writeFailureText(int code)
{
    switch (code) {
    case ENOSPC:
        return T("Diskte yer kalmadı. Yer açın veya başka bir kayıt klasörü seçin.");
    case EDQUOT:
        return T("Disk kotanız doldu. Yer açın veya başka bir kayıt klasörü seçin.");
    case EROFS:
        return T("Kayıt klasörü salt okunur. Başka bir kayıt klasörü seçin.");
    case EACCES:
    case EPERM:
        return T("Kayıt klasörüne yazma izniniz yok. Başka bir kayıt klasörü seçin.");
    case ENOENT:
        return T("Kayıt klasörü bulunamadı. Başka bir kayıt klasörü seçin.");
    case ENOTDIR:
    case EEXIST:
        return T("Kayıt klasörünün yolunda bir dosya duruyor. Başka bir kayıt klasörü seçin.");
    case ENAMETOOLONG:
        return T("Klibin yolu çok uzun. Yolu daha kısa bir kayıt klasörü seçin.");
    case EFBIG:
        return T("Dosya, bu disk için çok büyük. Klip süresini veya kaliteyi düşürün.");
    case EIO:
    case ENODEV:
    case ENXIO:
        return T("Diske ulaşılamıyor. Diskin bağlı olduğundan emin olun.");
    default:
        return QString::fromStdString(std::generic_category().message(code));
    }
}

} // namespace quelto
