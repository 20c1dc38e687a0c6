#pragma once

#include "Platform/Linux/X11/XcbReply.h"

#include <QByteArrayList>
#include <QHash>
#include <cstring>
#include <functional>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin::Testing {

/// Another program with selections, as well or ill behaved as a test wants it: it owns and asks by hand.
/// Does something only in pump().
class SelectionPeer {
public:
    struct Request {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_selection_notify_event_t answer;
    };
    using Answer = std::function<void(const Request&)>;
    struct Value {
        QByteArray type;
        int format = 0;
        QByteArray data;
    };

    SelectionPeer()
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_window(xcb_generate_id(m_connection))
    {
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(m_connection, 0, m_window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
            XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    }
    ~SelectionPeer() { die(); }
    SelectionPeer(const SelectionPeer&) = delete;
    SelectionPeer& operator=(const SelectionPeer&) = delete;

    /// Closes the connection: the server takes away what this program had.
    void die()
    {
        if (m_connection)
            xcb_disconnect(std::exchange(m_connection, nullptr));
    }

    xcb_atom_t atom(const QByteArray& name)
    {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection,
            xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.constData()),
            nullptr));
        return reply->atom;
    }
    QByteArray name(xcb_atom_t atom)
    {
        const XcbReply<xcb_get_atom_name_reply_t> reply(
            xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
        return reply
            ? QByteArray(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
            : QByteArray();
    }
    QByteArray atomList(const QByteArrayList& names)
    {
        QByteArray data;
        for (const QByteArray& each : names) {
            const xcb_atom_t value = atom(each);
            data.append(reinterpret_cast<const char*>(&value), sizeof value);
        }
        return data;
    }

    // As an owner.

    void own(const QByteArray& selection)
    {
        xcb_set_selection_owner(m_connection, m_window, atom(selection), XCB_CURRENT_TIME);
        sync();
    }
    xcb_window_t owner(const QByteArray& selection)
    {
        const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
            m_connection, xcb_get_selection_owner(m_connection, atom(selection)), nullptr));
        return reply->owner;
    }
    bool owns(const QByteArray& selection) { return owner(selection) == m_window; }

    /// How to answer when asked for a target; what is not here is refused.
    QHash<QByteArray, Answer> answers;
    /// The targets that others asked for, in order.
    QByteArrayList asked;

    void offer(const QByteArrayList& targets)
    {
        answers["TARGETS"]
            = [this, targets](const Request& request) { give(request, "ATOM", 32, atomList(targets)); };
    }
    void offerText(const QByteArray& target, const QByteArray& text)
    {
        answers[target] = [this, target, text](const Request& request) { give(request, target, 8, text); };
    }
    void ignore(const QByteArray& target)
    {
        answers[target] = [](const Request&) {};
    }

    void give(const Request& request, const QByteArray& type, std::uint8_t format, const QByteArray& data)
    {
        change(request.requestor, request.property, type, format, data);
        notify(request, request.property);
    }
    void refuse(const Request& request) { notify(request, XCB_ATOM_NONE); }
    void change(xcb_window_t window, xcb_atom_t property, const QByteArray& type, std::uint8_t format,
        const QByteArray& data)
    {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, property, atom(type), format,
            static_cast<std::uint32_t>(data.size() * 8 / format), data.constData());
        xcb_flush(m_connection);
    }
    /// Answers with the beginning of a transfer in pieces, and sees to it that its progress is noticed.
    void beginPieces(const Request& request)
    {
        watch(request.requestor, XCB_EVENT_MASK_PROPERTY_CHANGE);
        give(request, "INCR", 32, QByteArray(4, '\0'));
    }
    void watch(xcb_window_t window, std::uint32_t events)
    {
        xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &events);
    }

    // As a requestor.

    /// Asks for one target, into a property of the same name.
    void ask(const QByteArray& selection, const QByteArray& target, std::uint32_t time = XCB_CURRENT_TIME)
    {
        askInto(selection, target, atom(target), time);
    }
    void askInto(const QByteArray& selection, const QByteArray& target, xcb_atom_t property,
        std::uint32_t time = XCB_CURRENT_TIME)
    {
        xcb_convert_selection(m_connection, m_window, atom(selection), atom(target), property, time);
        xcb_flush(m_connection);
    }
    /// The answers that have come, as target and property; the property is 0 where it was refused.
    std::vector<std::pair<QByteArray, xcb_atom_t>> received;

    Value value(const QByteArray& property)
    {
        constexpr std::uint32_t everything = 0x1000000;
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection,
            xcb_get_property(
                m_connection, 0, m_window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, everything),
            nullptr));
        return {name(reply->type), reply->format,
            QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                xcb_get_property_value_length(reply.get()))};
    }
    QByteArrayList atomNames(const QByteArray& property)
    {
        const QByteArray data = value(property).data;
        QByteArrayList result;
        for (qsizetype offset = 0; offset + 4 <= data.size(); offset += 4) {
            xcb_atom_t each = 0;
            std::memcpy(&each, data.constData() + offset, sizeof each);
            result << (each ? name(each) : QByteArray());
        }
        return result;
    }
    void removeProperty(const QByteArray& property)
    {
        xcb_delete_property(m_connection, m_window, atom(property));
        xcb_flush(m_connection);
    }

    /// Sees each change of a property: of its own window, and of those it watches.
    std::function<void(const xcb_property_notify_event_t&)> propertyChanged;
    int selectionsLost = 0;

    /// Handles what has arrived.
    void pump()
    {
        while (const XcbReply<xcb_generic_event_t> event{
            m_connection ? xcb_poll_for_event(m_connection) : nullptr})
            handle(*event);
    }
    void sync()
    {
        const XcbReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_connection_t* xcb() const { return m_connection; }
    xcb_window_t window() const { return m_window; }

private:
    void handle(const xcb_generic_event_t& event)
    {
        switch (event.response_type & 0x7F) {
        case XCB_SELECTION_REQUEST:
            return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        case XCB_SELECTION_CLEAR:
            ++selectionsLost;
            return;
        case XCB_SELECTION_NOTIFY: {
            const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
            received.emplace_back(name(notice.target), notice.property);
            return;
        }
        case XCB_PROPERTY_NOTIFY:
            if (propertyChanged)
                propertyChanged(reinterpret_cast<const xcb_property_notify_event_t&>(event));
            return;
        default:
            return;
        }
    }

    void answer(const xcb_selection_request_event_t& event)
    {
        Request request{event.requestor, event.property, {}};
        request.answer.response_type = XCB_SELECTION_NOTIFY;
        request.answer.time = event.time;
        request.answer.requestor = event.requestor;
        request.answer.selection = event.selection;
        request.answer.target = event.target;
        const QByteArray target = name(event.target);
        asked << target;
        if (const Answer given = answers.value(target))
            given(request);
        else
            refuse(request);
    }

    void notify(const Request& request, xcb_atom_t property)
    {
        auto answer = request.answer;
        answer.property = property;
        xcb_send_event(m_connection, 0, request.requestor, 0, reinterpret_cast<const char*>(&answer));
        xcb_flush(m_connection);
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_window;
};

} // namespace Tavrin::Testing
