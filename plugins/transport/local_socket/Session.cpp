#include "transport/local_socket/Session.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

namespace local_socket {
namespace {

std::size_t CostOf(const std::string& encoded) {
    return encoded.size() + queuedEventOverhead;
}

std::size_t CostOf(const Frame& event) {
    return event.name.size() + event.payload.size() + queuedEventOverhead;
}

std::wstring Milliseconds(std::chrono::milliseconds time) {
    return std::to_wstring(time.count()) + L" ms";
}

std::wstring ReasonOf(FrameRefusal refusal, std::uint16_t peerVersion) {
    switch (refusal) {
    case FrameRefusal::OtherVersion:
        return L"it speaks version " + std::to_wstring(peerVersion) + L" of the protocol, this program version " +
               std::to_wstring(protocolVersion) + L"; use programs of the same release";
    case FrameRefusal::UnknownKind:
        return L"it sent a frame of an unknown kind";
    case FrameRefusal::NameSize:
        return L"it sent an event without a name or with one over " + std::to_wstring(maximumNameBytes) + L" bytes";
    case FrameRefusal::PayloadSize:
        return L"it sent an event over " + std::to_wstring(maximumPayloadBytes) + L" bytes";
    case FrameRefusal::NotAFrame:
    case FrameRefusal::None:
        break;
    }
    return L"it sent something that is no event";
}

std::wstring BusyReason(std::uint64_t served) {
    if (served == 0) {
        return L"it is busy: the system gives it no more open files; end some front ends, or start it again with a "
               L"higher limit of open files";
    }
    return L"it is busy: " + std::to_wstring(served) +
           L" front ends are connected, as many as it serves at a time; end some of them, or try again later";
}

} // namespace

Session::Session(Peer peerNumber, Role ownRole, Network& ownNetwork, std::unique_ptr<Channel> openChannel,
                 const Limits& peerLimits, SessionObserver& sessionOwner)
    : peer(peerNumber), role(ownRole), limits(peerLimits), owner(sessionOwner), channel(std::move(openChannel)),
      network(ownNetwork), deadline(ownNetwork.MakeTimer()) {}

void Session::Start() {
    deadline->Start(limits.handshake, [self = shared_from_this()] {
        self->Close(L"it does not answer: no greeting within " + Milliseconds(self->limits.handshake));
    });
    if (role == Role::Client) {
        Send(std::make_shared<const std::string>(EncodeHandshake()));
    }
    ContinueRead();
}

Sending Session::Send(SharedFrame frame) {
    if (isClosed || isFinishing || !canWrite) {
        return Sending::PeerGone;
    }
    const std::size_t cost = CostOf(*frame);
    if (!outgoing.empty() && outgoingCost + cost > limits.outgoingBytes) {
        return Sending::QueueFull;
    }
    outgoing.push_back(std::move(frame));
    outgoingCost += cost;
    if (outgoing.size() == 1) {
        ContinueWrite();
    }
    return Sending::Queued;
}

Sending Session::SendAwaited(SharedFrame frame, EventNumber number, Settle settle) {
    const Sending sending = Send(std::move(frame));
    if (sending == Sending::Queued) {
        const auto entry = awaited.emplace(number, Awaited{network.MakeTimer(), std::move(settle)}).first;
        entry->second.timeout->Start(limits.acknowledgement,
                                     [self = shared_from_this(), number] { self->EndOf(number, Outcome::TimedOut); });
    }
    return sending;
}

bool Session::SendOrClose(SharedFrame frame) {
    const Sending sending = Send(std::move(frame));
    if (sending == Sending::QueueFull) {
        Close(L"it does not take its events");
    }
    return sending == Sending::Queued;
}

void Session::EventHandled(const Frame& event) {
    undelivered -= CostOf(event);
    if (isReadingPaused && !isClosed && undelivered <= limits.undeliveredBytes) {
        isReadingPaused = false;
        ContinueRead();
    }
}

void Session::TurnAway(std::uint64_t served) {
    Send(std::make_shared<const std::string>(EncodeBusy(served)));
    Close(L"");
}

void Session::Finish() {
    isFinishing = true;
    if (!isHandshakeDone || outgoing.empty()) {
        Close(L"");
    }
}

void Session::Close(const std::wstring& reason) {
    if (!std::exchange(isClosed, true)) {
        deadline->Cancel();
        channel->Close();
        while (!awaited.empty()) {
            EndOf(awaited.begin()->first, Outcome::PeerGone);
        }
        owner.OnClosed(*this, reason);
    }
}

void Session::ContinueRead() {
    WatchTheFrame();
    channel->Read(readBuffer.data(), readBuffer.size(),
                  [self = shared_from_this()](bool succeeded, std::size_t bytes) { self->OnRead(succeeded, bytes); });
}

void Session::OnRead(bool succeeded, std::size_t bytes) {
    if (isClosed) {
        return;
    }
    if (!succeeded) {
        Close(decoder.IsWithinFrame() ? L"it went in the middle of an event" : L"");
        return;
    }
    try {
        Take({readBuffer.data(), bytes});
    } catch (const std::bad_alloc&) {
        Close(L"there is no memory left for what it sends");
    }
    if (isClosed) {
        return;
    }
    if (undelivered > limits.undeliveredBytes) {
        isReadingPaused = true;
        deadline->Cancel();
    } else {
        ContinueRead();
    }
}

void Session::Take(std::string_view bytes) {
    std::vector<Frame> frames;
    const FrameRefusal refusal = decoder.Take(bytes, frames);
    for (Frame& frame : frames) {
        TakeFrame(std::move(frame));
    }
    if (refusal != FrameRefusal::None) {
        Refuse(refusal);
    }
}

void Session::TakeFrame(Frame frame) {
    if (isClosed || isFinishing) {
        return;
    }
    if (!isHandshakeDone) {
        TakeFirstFrame(frame);
    } else if (frame.kind == FrameKind::Event) {
        undelivered += CostOf(frame);
        owner.OnEvent(*this, std::move(frame));
    } else if (frame.kind == FrameKind::Acknowledgement) {
        TakeAcknowledgement(frame.number);
    } else {
        Close(L"it greeted twice");
    }
}

void Session::TakeFirstFrame(const Frame& frame) {
    if (frame.kind == FrameKind::Handshake) {
        TakeHandshake();
    } else if (frame.kind == FrameKind::Busy && role == Role::Client) {
        wasTurnedAway = true;
        Close(BusyReason(frame.number));
    } else {
        Close(L"it sent an event before its greeting");
    }
}

/// An acknowledgement that arrives after its timeout is ignored.
void Session::TakeAcknowledgement(EventNumber number) {
    if (role == Role::Server) {
        Close(L"it acknowledged an event, which only an engine does");
    } else {
        EndOf(number, Outcome::Acknowledged);
    }
}

void Session::EndOf(EventNumber number, Outcome outcome) {
    if (auto entry = awaited.extract(number)) {
        entry.mapped().timeout->Cancel();
        entry.mapped().settle(outcome);
    }
}

void Session::TakeHandshake() {
    isHandshakeDone = true;
    deadline->Cancel();
    if (role == Role::Server) {
        Send(std::make_shared<const std::string>(EncodeHandshake()));
    }
    owner.OnHandshake(*this);
}

void Session::Refuse(FrameRefusal refusal) {
    if (refusal == FrameRefusal::OtherVersion && role == Role::Server && !isHandshakeDone) {
        // The answer lets the client report which version is required.
        Send(std::make_shared<const std::string>(EncodeHandshake()));
    }
    Close(ReasonOf(refusal, decoder.PeerVersion()));
}

/// The rest of a started frame must arrive in time. Received bytes do not extend the handshake deadline.
void Session::WatchTheFrame() {
    if (!isHandshakeDone) {
        return;
    }
    if (!decoder.IsWithinFrame()) {
        deadline->Cancel();
        return;
    }
    deadline->Start(limits.stall, [self = shared_from_this()] {
        self->Close(L"it stopped in the middle of an event for " + Milliseconds(self->limits.stall));
    });
}

void Session::ContinueWrite() {
    const std::string& frame = *outgoing.front();
    const std::size_t size = std::min(frame.size() - writtenBytes, chunkBytes);
    channel->Write(frame.data() + writtenBytes, size, [self = shared_from_this()](bool succeeded, std::size_t bytes) {
        self->OnWritten(succeeded, bytes);
    });
}

void Session::OnWritten(bool succeeded, std::size_t bytes) {
    if (isClosed) {
        return;
    }
    if (!succeeded) {
        // The reading side detects the end of the connection after the bytes that are still to be read.
        canWrite = false;
        outgoing.clear();
        if (isFinishing) {
            Close(L"");
        }
        return;
    }
    writtenBytes += bytes;
    if (writtenBytes == outgoing.front()->size()) {
        outgoingCost -= CostOf(*outgoing.front());
        outgoing.pop_front();
        writtenBytes = 0;
    }
    if (!outgoing.empty()) {
        ContinueWrite();
    } else if (isFinishing) {
        Close(L"");
    }
}

} // namespace local_socket
