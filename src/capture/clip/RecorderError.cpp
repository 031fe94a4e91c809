// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/RecorderError.h"

#include "base/language/T.h"

namespace quelto {

RecorderError::RecorderError(const QString& message)
    : RecorderError(message, message)
{
}

RecorderError::RecorderError(const QString& message, const QString& reason)
    : std::runtime_error(message.toStdString())
    , m_message(message)
    , m_reason(reason)
{
}

RecorderError RecorderError::encoder(int status)
{
    return RecorderError(T("Video kodlayıcı başlatılamadı ({0}). Farklı bir çözünürlük veya codec deneyin.", status));
}

RecorderError RecorderError::silentEncoder()
{
    return RecorderError(T("Video kodlayıcı görüntü vermiyor. Farklı bir çözünürlük veya codec deneyin."));
}

RecorderError RecorderError::writer(const QString& text)
{
    return {T("Klip yazılamadı: {0}", text), text};
}

RecorderError RecorderError::permission()
{
    return RecorderError(
        TOnDesktop("Ekran kaydı izni yok. Sistem Ayarları › Gizlilik ve Güvenlik › Ekran ve Sistem Sesi Kaydı "
                   "bölümünden Quelto'ye izin verip uygulamayı yeniden başlatın."));
}

RecorderError RecorderError::noDisplay()
{
    return RecorderError(T("Kaydedilecek ekran bulunamadı."));
}

RecorderError RecorderError::emptyBuffer()
{
    return RecorderError(T("Tamponda henüz görüntü yok."));
}

} // namespace quelto
