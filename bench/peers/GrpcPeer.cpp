#include "bench/peers/GrpcPeer.h"

#include "PeerFields.h"
#include "Peers.grpc.pb.h"

#include <grpcpp/grpcpp.h>

#include <stdexcept>
#include <vector>

namespace {

#define PEERS_TO_PROTO(type, name, protoName) to.set_##protoName(from.name);
#define PEERS_FROM_PROTO(type, name, protoName) to.name = from.protoName();

void convert(const DiskInfo& from, peers::DiskInfo& to)
{
    PEERS_DiskInfo(PEERS_TO_PROTO)
}

void convert(const PartitionInfo& from, peers::PartitionInfo& to)
{
    PEERS_PartitionInfo(PEERS_TO_PROTO)
}

void convert(const peers::DiskInfo& from, DiskInfo& to)
{
    PEERS_DiskInfo(PEERS_FROM_PROTO)
}

void convert(const peers::PartitionInfo& from, PartitionInfo& to)
{
    PEERS_PartitionInfo(PEERS_FROM_PROTO)
}

template <typename To, typename From> std::vector<To> converted(const From& from)
{
    std::vector<To> to;
    for (const auto& record : from)
        convert(record, to.emplace_back());
    return to;
}

class Service : public peers::Plugin::Service
{
public:
    explicit Service(const Records& prepared)
        : disks_(converted<peers::DiskInfo>(prepared.disks)),
          partitions_(converted<peers::PartitionInfo>(prepared.partitions))
    {
    }

    grpc::Status GetPartitionInfo(grpc::ServerContext*, const peers::Drive*,
                                  peers::PartitionInfo* reply) override
    {
        *reply = partitions_.front();
        return grpc::Status::OK;
    }

    grpc::Status ListAllDisks(grpc::ServerContext*, const peers::Nothing*, peers::Disks* reply) override
    {
        reply->mutable_records()->Add(disks_.begin(), disks_.end());
        return grpc::Status::OK;
    }

    grpc::Status GetAllPartitionInfo(grpc::ServerContext*, const peers::Nothing*,
                                     peers::Partitions* reply) override
    {
        reply->mutable_records()->Add(partitions_.begin(), partitions_.end());
        return grpc::Status::OK;
    }

private:
    const std::vector<peers::DiskInfo> disks_;
    const std::vector<peers::PartitionInfo> partitions_;
};

void require(const grpc::Status& status)
{
    if (!status.ok())
        throw std::runtime_error("gRPC: " + status.error_message());
}

} // namespace

struct GrpcPeer::Parts
{
    Service service;
    std::unique_ptr<grpc::Server> server;
    std::unique_ptr<peers::Plugin::Stub> client;

    explicit Parts(const Records& prepared) : service(prepared)
    {
        int port = 0;
        grpc::ServerBuilder builder;
        builder.AddListeningPort("127.0.0.1:0", grpc::InsecureServerCredentials(), &port);
        builder.RegisterService(&service);
        server = builder.BuildAndStart();
        if (!server)
            throw std::runtime_error("The gRPC server did not start.");
        // The default limit of 4 MiB is less than 10,000 partitions.
        grpc::ChannelArguments arguments;
        arguments.SetMaxReceiveMessageSize(-1);
        client = peers::Plugin::NewStub(grpc::CreateCustomChannel(
            "127.0.0.1:" + std::to_string(port), grpc::InsecureChannelCredentials(), arguments));
    }

    void getPartitionInfo(peers::PartitionInfo& reply) const
    {
        grpc::ClientContext context;
        peers::Drive drive;
        drive.set_drive_letter(kDrive);
        require(client->GetPartitionInfo(&context, drive, &reply));
    }

    void listAllDisks(peers::Disks& reply) const
    {
        grpc::ClientContext context;
        require(client->ListAllDisks(&context, {}, &reply));
    }

    void getAllPartitionInfo(peers::Partitions& reply) const
    {
        grpc::ClientContext context;
        require(client->GetAllPartitionInfo(&context, {}, &reply));
    }
};

GrpcPeer::GrpcPeer(const Records& prepared, Call call)
    : parts_(std::make_unique<Parts>(prepared)), call_(call)
{
}

GrpcPeer::~GrpcPeer() = default;

void GrpcPeer::call()
{
    switch (call_) {
    case Call::GetPartitionInfo: {
        peers::PartitionInfo reply;
        return parts_->getPartitionInfo(reply);
    }
    case Call::ListAllDisks: {
        peers::Disks reply;
        return parts_->listAllDisks(reply);
    }
    case Call::GetAllPartitionInfo: {
        peers::Partitions reply;
        return parts_->getAllPartitionInfo(reply);
    }
    }
}

bool GrpcPeer::isCorrect(const Records& expected)
{
    peers::Disks disks;
    peers::Partitions partitions;
    switch (call_) {
    case Call::GetPartitionInfo:
        parts_->getPartitionInfo(*partitions.add_records());
        break;
    case Call::ListAllDisks:
        parts_->listAllDisks(disks);
        break;
    case Call::GetAllPartitionInfo:
        parts_->getAllPartitionInfo(partitions);
        break;
    }
    return Records{converted<DiskInfo>(disks.records()), converted<PartitionInfo>(partitions.records())} ==
           expected;
}
