import {
  AmbientLight,
  Box3,
  Box3Helper,
  Color,
  DirectionalLight,
  DoubleSide,
  EdgesGeometry,
  Group,
  LineBasicMaterial,
  LineSegments,
  Material,
  Mesh,
  MeshStandardMaterial,
  PerspectiveCamera,
  Plane,
  Scene,
  Vector3,
  WebGLRenderer,
  type Object3D,
} from 'three';
import { OrbitControls } from 'three/examples/jsm/controls/OrbitControls.js';

export type Axis = 'x' | 'y' | 'z';

export interface ViewerColours {
  background: string;
  edges: string;
  box: string;
}

const edgeAngle = 25;
const nothingCut = 1e9;
const mostMetal = 0.3;

function materialsOf(object: Object3D): Material[] {
  return object instanceof Mesh ? ([] as Material[]).concat(object.material as Material | Material[]) : [];
}

function sharpEdges(mesh: Mesh, material: LineBasicMaterial): LineSegments {
  const lines = new LineSegments(new EdgesGeometry(mesh.geometry, edgeAngle), material);
  lines.applyMatrix4(mesh.matrixWorld);
  return lines;
}

/** A picture of a model that the user turns; drawn only when something has changed. The caller calls `dispose`. */
export class Viewer {
  readonly size = new Vector3();
  private readonly renderer: WebGLRenderer;
  private readonly scene = new Scene();
  private readonly camera = new PerspectiveCamera(35, 1, 0.1, 1000);
  private readonly controls: OrbitControls;
  private readonly box = new Box3();
  private readonly frame: Box3Helper;
  private readonly plane = new Plane(new Vector3(-1, 0, 0), nothingCut);
  private edges: Group | undefined;
  private isDue = false;

  constructor(
    private readonly canvas: HTMLCanvasElement,
    private readonly model: Object3D,
  ) {
    this.renderer = new WebGLRenderer({ canvas, antialias: true, preserveDrawingBuffer: true });
    this.renderer.localClippingEnabled = true;
    this.scene.add(model, new AmbientLight(0xffffff, 1.4));
    this.addLights();
    model.updateMatrixWorld(true);
    this.box.setFromObject(model).getSize(this.size);
    this.frame = new Box3Helper(this.box);
    this.frame.visible = false;
    this.scene.add(this.frame);
    this.controls = new OrbitControls(this.camera, canvas);
    this.controls.addEventListener('change', this.draw);
    this.prepareMaterials();
    this.lookFrom(1, -1.25, 0.8);
  }

  setColours(colours: ViewerColours): void {
    this.scene.background = new Color(colours.background);
    (this.frame.material as LineBasicMaterial).color.set(colours.box);
    this.edgeMaterial.color.set(colours.edges);
    this.draw();
  }

  resize(width: number, height: number): void {
    if (width === 0 || height === 0) return;
    this.renderer.setPixelRatio(Math.min(2, devicePixelRatio));
    this.renderer.setSize(width, height, false);
    this.camera.aspect = width / height;
    this.camera.updateProjectionMatrix();
    this.draw();
  }

  /** Looks at the middle of the model from this direction; the z axis points upwards. */
  lookFrom(x: number, y: number, z: number): void {
    const middle = this.box.getCenter(new Vector3());
    const radius = this.size.length() / 2 || 1;
    const distance = radius / Math.sin((this.camera.fov * Math.PI) / 360);
    this.camera.up.set(0, 0, 1);
    this.camera.position.copy(middle).addScaledVector(new Vector3(x, y, z).normalize(), distance * 1.08);
    this.camera.near = distance / 100;
    this.camera.far = distance * 10;
    this.camera.updateProjectionMatrix();
    this.controls.target.copy(middle);
    this.controls.update();
    this.draw();
  }

  /** Turns the model by these angles (radians), as a mouse would. */
  turn(sideways: number, upwards: number): void {
    const offset = this.camera.position.clone().sub(this.controls.target).applyAxisAngle(this.camera.up, sideways);
    const side = new Vector3().crossVectors(this.camera.up, offset).normalize();
    const turned = offset.clone().applyAxisAngle(side, -upwards);
    if (Math.abs(turned.z) < turned.length() * 0.99) offset.copy(turned);
    this.camera.position.copy(this.controls.target).add(offset);
    this.controls.update();
    this.draw();
  }

  /** Cuts off what is beyond `share` (0 to 1) of the model's length along the axis; undefined shows all. */
  cut(axis: Axis, share: number | undefined): void {
    this.plane.normal.set(0, 0, 0)[axis] = -1;
    const { min } = this.box;
    this.plane.constant = share === undefined ? nothingCut : min[axis] + share * this.size[axis] * 1.0001;
    this.draw();
  }

  /** Shows the box around the model, whose lengths are `size`. */
  showBox(isShown: boolean): void {
    this.frame.visible = isShown;
    this.draw();
  }

  showEdges(isShown: boolean): void {
    if (isShown && !this.edges) this.addEdges();
    if (this.edges) this.edges.visible = isShown;
    this.draw();
  }

  dispose(): void {
    this.controls.dispose();
    this.scene.traverse((object) => {
      if (object instanceof Mesh || object instanceof LineSegments) object.geometry.dispose();
      materialsOf(object).forEach((material) => material.dispose());
    });
    this.renderer.dispose();
  }

  private readonly edgeMaterial = new LineBasicMaterial({ color: 0x223044 });

  private addLights(): void {
    const places: readonly [number, number, number, number][] = [
      [1, -1.5, 2, 1.7],
      [-2, 1, 0.5, 0.7],
    ];
    for (const [x, y, z, strength] of places) {
      const light = new DirectionalLight(0xffffff, strength);
      light.position.set(x, y, z);
      this.scene.add(light);
    }
  }

  private addEdges(): void {
    const group = new Group();
    this.model.traverse((object) => {
      if (object instanceof Mesh) group.add(sharpEdges(object, this.edgeMaterial));
    });
    this.edgeMaterial.clippingPlanes = [this.plane];
    this.edges = group;
    this.scene.add(group);
  }

  private prepareMaterials(): void {
    this.model.traverse((object) => materialsOf(object).forEach((material) => this.prepare(material)));
  }

  private prepare(material: Material): void {
    material.clippingPlanes = [this.plane];
    material.side = DoubleSide; // A section shows the inside.
    material.polygonOffset = true; // Faces are drawn behind their edges.
    material.polygonOffsetFactor = material.polygonOffsetUnits = 1;
    // Metal would be nearly black: there are no surroundings that it could mirror.
    if (material instanceof MeshStandardMaterial) material.metalness = Math.min(material.metalness, mostMetal);
  }

  private readonly draw = (): void => {
    if (this.isDue) return;
    this.isDue = true;
    requestAnimationFrame(() => {
      this.isDue = false;
      if (this.canvas.isConnected) this.renderer.render(this.scene, this.camera);
    });
  };
}
