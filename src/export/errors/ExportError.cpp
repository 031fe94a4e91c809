// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/errors/ExportError.h"

#include "base/language/T.h"

namespace quelto {

ExportError::ExportError(const QString& message)
    : std::runtime_error(message.toStdString())
    , m_message(message)
{
}

ExportError ExportError::failed(const QString& reason)
{
    return ExportError(T("Dışa aktarma başarısız: {0}", reason));
}

ExportError ExportError::noVideo()
{
    return ExportError(T("Klipte video bulunamadı."));
}

} // namespace quelto
