import { once } from 'node:events';
import { connect, createServer, type AddressInfo, type Socket } from 'node:net';

/** A port of this machine that nothing uses. */
export async function freePort(): Promise<number> {
  const server = createServer().listen(0, '127.0.0.1');
  await once(server, 'listening');
  const { port } = server.address() as AddressInfo;
  server.close();
  await once(server, 'close');
  return port;
}

/** A port that leads to another one, until the connection is cut. */
export class Forwarder {
  private isCut = false;
  private readonly sockets = new Set<Socket>();
  private readonly server = createServer((near) => (this.isCut ? near.destroy() : this.join(near)));

  private constructor(readonly target: number) {}

  static async start(): Promise<Forwarder> {
    const forwarder = new Forwarder(await freePort());
    forwarder.server.listen(0, '127.0.0.1');
    await once(forwarder.server, 'listening');
    return forwarder;
  }

  get address(): string {
    return `http://127.0.0.1:${(this.server.address() as AddressInfo).port}/`;
  }

  /** Breaks all connections and refuses new ones. */
  cut(): void {
    this.isCut = true;
    this.sockets.forEach((socket) => socket.destroy());
  }

  restore(): void {
    this.isCut = false;
  }

  stop(): void {
    this.cut();
    this.server.close();
  }

  private join(near: Socket): void {
    const far = connect(this.target, '127.0.0.1');
    this.keep(near, far);
    this.keep(far, near);
    near.pipe(far);
    far.pipe(near);
  }

  private keep(socket: Socket, other: Socket): void {
    this.sockets.add(socket);
    socket.on('error', () => other.destroy());
    socket.on('close', () => (this.sockets.delete(socket), other.destroy()));
  }
}
