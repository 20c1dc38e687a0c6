#include "Core/Presets/QuickTextPreset.h"

namespace Tavrin {

const std::vector<QuickTextPreset>& quickTextPresets()
{
    using Mode = QuickTextPayload::Mode;
    static const std::vector<QuickTextPreset> presets{
        {QStringLiteral("Email liên hệ"), QStringLiteral("lienhe@example.com"), Mode::paste},
        {QStringLiteral("Số điện thoại"), QStringLiteral("0900 000 000"), Mode::paste},
        {QStringLiteral("Ngày tháng hiện tại"), QStringLiteral("{date}"), Mode::paste},
        {QStringLiteral("Dấu thời gian (Timestamp)"), QStringLiteral("[{datetime}]"), Mode::paste},
        {QStringLiteral("Lời chào & Cảm ơn"),
            QStringLiteral("Dạ em chào anh/chị ạ! Cảm ơn anh/chị đã liên hệ, em có thể hỗ trợ gì thêm cho "
                           "anh/chị không ạ?"),
            Mode::paste},
        {QStringLiteral("Trích dẫn Clipboard"), QStringLiteral("> {clipboard}"), Mode::paste},
    };
    return presets;
}

} // namespace Tavrin
