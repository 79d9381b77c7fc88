// Which account holds the other end of a connection, and which connections are admitted.
#include "service/PeerAccount.h"
#include "service/AccountCheck.h"

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QNetworkInterface>

#include <thrift/transport/TServerSocket.h>
#include <thrift/transport/TSocket.h>
#include <thrift/transport/TTransportException.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

using apache::thrift::transport::TServerSocket;
using apache::thrift::transport::TSocket;

namespace {

// A connection between two sockets of this process.
class Connection
{
public:
    Connection(const std::string& bound, const std::string& called) : server_(bound, 0)
    {
        server_.listen();
        client_ = std::make_shared<TSocket>(called, server_.getPort());
        client_->open();
        // accept waits for the first byte.
        client_->write(reinterpret_cast<const std::uint8_t*>("x"), 1);
        accepted_ = std::static_pointer_cast<TSocket>(server_.accept());
    }

    THRIFT_SOCKET serviceEnd() const { return accepted_->getSocketFD(); }
    THRIFT_SOCKET clientEnd() const { return client_->getSocketFD(); }
    // With @p linger 0, closing resets the connection.
    void closeClient(bool reset)
    {
        client_->setLinger(reset, 0);
        client_->close();
    }

private:
    TServerSocket server_;
    std::shared_ptr<TSocket> client_;
    std::shared_ptr<TSocket> accepted_;
};

// An IPv4 address of a network card; empty on a computer without one. The packets stay within the computer.
QString otherAddress()
{
    for (const QHostAddress& address : QNetworkInterface::allAddresses())
        if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback())
            return address.toString();
    return {};
}

PeerAccount::Kind kindOf(const Connection& connection)
{
    return peerAccount(connection.serviceEnd()).kind;
}

TEST(PeerAccount, OfThisProcess_OnIpv4_IsTheSame)
{
    EXPECT_EQ(kindOf(Connection("127.0.0.1", "127.0.0.1")), PeerAccount::Kind::Same);
}

TEST(PeerAccount, OfThisProcess_OnIpv6_IsTheSame)
{
    EXPECT_EQ(kindOf(Connection("::1", "::1")), PeerAccount::Kind::Same);
}

TEST(PeerAccount, OfThisProcess_OnIpv4MappedIntoIpv6_IsTheSame)
{
    EXPECT_EQ(kindOf(Connection("::", "127.0.0.1")), PeerAccount::Kind::Same);
}

TEST(PeerAccount, OfTheSame_HasNoName)
{
    EXPECT_FALSE(peerAccount(Connection("127.0.0.1", "127.0.0.1").serviceEnd()).name);
}

TEST(PeerAccount, ClientThatHasClosedItsEnd_IsGone)
{
    Connection connection("127.0.0.1", "127.0.0.1");
    connection.closeClient(false);
    EXPECT_EQ(kindOf(connection), PeerAccount::Kind::Gone);
}

TEST(PeerAccount, ClientThatHasResetTheConnection_IsGone)
{
    Connection connection("127.0.0.1", "127.0.0.1");
    connection.closeClient(true);
    EXPECT_EQ(kindOf(connection), PeerAccount::Kind::Gone);
}

TEST(RemotePeer, OnEachLoopbackAddress_IsFalse)
{
    EXPECT_FALSE(isRemotePeer(Connection("127.0.0.1", "127.0.0.1").serviceEnd()));
    EXPECT_FALSE(isRemotePeer(Connection("0.0.0.0", "127.0.0.2").serviceEnd()));
    EXPECT_FALSE(isRemotePeer(Connection("::1", "::1").serviceEnd()));
    EXPECT_FALSE(isRemotePeer(Connection("::", "127.0.0.1").serviceEnd()));
}

TEST(RemotePeer, OnAnotherAddressOfThisComputer_IsTrueAndAdmittedWithoutAQuery)
{
    const QString address = otherAddress();
    if (address.isEmpty())
        GTEST_SKIP() << "This computer has loopback addresses only.";
    const Connection connection("0.0.0.0", address.toStdString());
    EXPECT_TRUE(isRemotePeer(connection.serviceEnd()));
    AccountCheck check([](THRIFT_SOCKET) -> PeerAccount { throw std::logic_error("queried"); });
    EXPECT_TRUE(check.admits(connection.serviceEnd()));
}

TEST(LoopbackBinding, OnlyALoopbackAddress_Counts)
{
    const auto isLoopback = [](const std::string& address) {
        TServerSocket server(address, 0);
        server.listen();
        return isBoundToLoopback(server.getSocketFD());
    };
    EXPECT_TRUE(isLoopback("127.0.0.1"));
    EXPECT_TRUE(isLoopback("localhost"));
    EXPECT_TRUE(isLoopback("::1"));
    EXPECT_FALSE(isLoopback("0.0.0.0"));
    EXPECT_FALSE(isLoopback("::"));
}

bool admits(PeerAccount::Kind kind)
{
    AccountCheck check([kind](THRIFT_SOCKET) { return PeerAccount{kind, [] { return "user 7"; }}; });
    return check.admits(Connection("127.0.0.1", "127.0.0.1").serviceEnd());
}

TEST(AccountCheck, TheSameAndTheSystemsAccount_AreAdmitted)
{
    EXPECT_TRUE(admits(PeerAccount::Kind::Same));
    EXPECT_TRUE(admits(PeerAccount::Kind::System));
}

TEST(AccountCheck, AnyOtherAccount_IsNotAdmitted)
{
    EXPECT_FALSE(admits(PeerAccount::Kind::Other));
    EXPECT_FALSE(admits(PeerAccount::Kind::Gone));
    EXPECT_FALSE(admits(PeerAccount::Kind::Unknown));
}

// Reading the name takes longer than the query, and one message in ten seconds names an account.
TEST(AccountCheck, NameOfAnotherAccount_IsReadOnlyForAMessage)
{
    int names = 0;
    AccountCheck check([&names](THRIFT_SOCKET) {
        return PeerAccount{PeerAccount::Kind::Other, [&names] {
                               ++names;
                               return "user 7";
                           }};
    });
    const Connection connection("127.0.0.1", "127.0.0.1");
    for (int i = 0; i < 5; ++i)
        EXPECT_FALSE(check.admits(connection.serviceEnd()));
    EXPECT_EQ(names, 1);
}

// The bytes that it sent before can still be read, so it must not pass as a client of another address.
TEST(AccountCheck, ConnectionThatItsClientHasReset_IsNotAdmitted)
{
    Connection connection("127.0.0.1", "127.0.0.1");
    connection.closeClient(true);
    EXPECT_FALSE(AccountCheck().admits(connection.serviceEnd()));
}

TEST(AccountCheck, WithTheSystemsAnswer_AdmitsThisProcess)
{
    EXPECT_TRUE(AccountCheck().admits(Connection("127.0.0.1", "127.0.0.1").serviceEnd()));
}

} // namespace
